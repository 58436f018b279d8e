// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Window.h"

#include <memory>

class Logbook;
namespace Ui {
class Form16;
}

// Up to three profile names, Perfil1_0 to Perfil1_2. "Crear" keeps all three; "Cargar" has nothing to load yet.
class Form16 : public Window {
    Q_OBJECT

public:
    Form16(Logbook &logbook, Dialogs &dialogs, QWidget *owner);
    ~Form16() override;

    // Reads the names and shows the window until it is closed.
    void ShowProfiles();

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    void Create();

    Logbook &logbook_;
    std::unique_ptr<Ui::Form16> ui_;
};
