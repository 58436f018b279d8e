// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Window.h"

#include <QRegularExpression>
#include <memory>
#include <vector>

namespace Ui {
class Manual;
}

// The operator's manual, read beside the program: it is no dialog, so the window that asked for it can be used
// meanwhile. It needs nothing but the files that come with the program.
//
// | control   | meaning                                                                           |
// |-----------|-----------------------------------------------------------------------------------|
// | capitulos | the chapters; while a word is looked for, those that hold it                      |
// | palabra   | the word, accents and case aside; Enter goes to the next place                    |
// | pagina    | the chapter                                                                       |
//
// Keys: Esc closes, Ctrl+F looks for a word, Ctrl++ and Ctrl+- change the size of the letters, Alt+Left goes back.
class Manual : public Window {
    Q_OBJECT

public:
    // `folder` holds README.md, the chapters in the numbered list of that file, and their pictures.
    Manual(const QString &folder, Dialogs &dialogs);
    ~Manual() override;

    // Shows the chapter about this window, or the first page where there is none; tells it when the manual is missing.
    void ShowFor(QWidget &asking);

    // The file of the chapter about a window, by the window's name.
    static QString ChapterAbout(const QString &window);

protected:
    bool PreviewKey(QKeyEvent *event) override;
    bool ClaimsShortcut(const QKeyEvent *event) const override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    struct Chapter {
        QString file, text;
    };

    void ReadChapters();
    void Open(const QString &file);
    void ChapterShown(const QString &file);
    void Dress();
    void DressTables();
    void FitPictures();
    void Look(const QString &word);
    void MarkWord();
    void NextPlace();

    const QString folder_;
    std::unique_ptr<Ui::Manual> ui_;
    std::vector<Chapter> chapters_; // as listed
    QRegularExpression wanted_; // empty: nothing is looked for
};
