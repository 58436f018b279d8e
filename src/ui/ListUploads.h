// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/ListUpload.h"

#include <QObject>
#include <memory>

struct Program;
class QGroupBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTextBrowser;
class Run;
class Window;

// The uploads of the search window: what is asked before, the frame in which the answers come in, what is told after.
class ListUploads : public QObject {
    Q_OBJECT

public:
    // The controls belong to the window.
    struct Controls {
        QGroupBox *Frame5;
        QTextBrowser *RichTextBox1;
        QProgressBar *ProgressBar1;
        QLabel *estado;
        QPushButton *detener, *Command7;
    };
    ListUploads(Program &program, Window &window, Controls controls);
    ~ListUploads() override;

    using Row = std::function<std::optional<QStringList>(qsizetype place)>;
    // Asks, and sends `rows` rows. They must not change their places until Working(false).
    void Upload(ListUpload::Target target, qsizetype rows, Row row);

Q_SIGNALS:
    void Working(bool working);

private:
    UploadRules::Account AccountFor(ListUpload::Target target) const;
    bool AskBefore(qsizetype rows);
    void ShowFrame(ListUpload::Target target, qsizetype rows);
    void Write(const QString &text, ListUpload::Colour colour);
    void ShowProgress(const ListUpload::Counts &counts);
    void Ended(ListUpload::Target target, ListUpload::End end, const ListUpload::Counts &counts, const QString &cause);

    Program &program_;
    Window &window_;
    Controls controls_;
    ListUpload::Errors errors_; // of all runs since the start
    std::unique_ptr<Run> run_;
    std::unique_ptr<ListUpload> upload_; // the run that ended stays until the next
    QString sending_; // call, band and mode of the row that was sent last
};
