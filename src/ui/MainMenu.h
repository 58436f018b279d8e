// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMenuBar>

class QAction;
class QMenu;

// The menu bar of the main window. Entries are found by their names; an entry whose work is not there is disabled.
class MainMenu : public QMenuBar {
    Q_OBJECT

public:
    explicit MainMenu(QWidget *parent = nullptr);

    // The entry of this name; asking for one that does not exist is a programming error.
    QAction *Entry(const char *name) const;
    // Enables the entry and runs `slot` when it is chosen.
    template <typename Receiver, typename Slot>
    void On(const char *name, Receiver *receiver, Slot slot)
    {
        QAction *entry = Entry(name);
        entry->setEnabled(true);
        connect(entry, &QAction::triggered, receiver, slot);
    }
    // The menu "archivo".
    void SetArchivoEnabled(bool enabled);

private:
    QMenu *archivo_;
};
