// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "logging/SatelliteEdit.h"
#include "ui/Window.h"

#include <functional>
#include <memory>

class Logbook;
class QComboBox;
class QLineEdit;
namespace Ui {
class Form11;
}

// The editor of the satellite catalogue.
//
// | control                                        | meaning                                       |
// |------------------------------------------------|-----------------------------------------------|
// | Text1, Combo1, Combo2, Combo3, Text4, Frec_new | a new satellite (RefuseAdding)                |
// | List1                                          | the lines of the catalogue                    |
// | Frame3, Text2, Combo8, 7, 6, Text3, Text5      | the line that was clicked, Label2 its number; |
// |                                                | hidden until there is one                     |
class Form11 : public Window {
    Q_OBJECT

public:
    // `changed` is called after each change of the catalogue.
    Form11(Logbook &logbook, Dialogs &dialogs, QWidget *owner, std::function<void()> changed);
    ~Form11() override;

    // Reads the catalogue and shows the window until it is closed.
    void ShowEditor();

protected:
    bool PreviewKey(QKeyEvent *event) override;
    void FieldLeft(QWidget *field) override;
    QWidget *FocusFallback() const override;

private:
    void Connect();
    std::optional<QStringList> StoredLines() const;
    QStringList Lines() const; // as the list shows them
    bool WriteLines(const QStringList &lines);
    void FillList(const QStringList &lines);
    void Add();
    void Accept();
    void Remove();
    void EditLine(int row);
    void CloseEditing();

    Logbook &logbook_;
    std::unique_ptr<Ui::Form11> ui_;
    std::function<void()> changed_;
};
