// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/SyncLda.h"

#include <QWidget>
#include <functional>
#include <memory>

struct Program;
class Window;
namespace Ui {
class SyncPanel;
}

// The upload to LdA with its confirmations, in the window that shows its list.
//
// | control      | meaning                                             |
// |--------------|-----------------------------------------------------|
// | List1        | a line for each contact that was sent, with its fate |
// | estado       | how far the run is, and what it counted             |
// | ProgressBar1 | the same as a bar                                   |
// | detener      | ends the run                                        |
class SyncPanel : public QWidget {
    Q_OBJECT

public:
    SyncPanel(Program &program, Window &window);
    ~SyncPanel() override;

    // Empty, ready for a run.
    void Clear();
    // Sends these contacts. `lost` is called when the run ended for want of a connection, after that was told.
    void Begin(const QList<SyncQso> &qsos, const SyncRules::Account &account, std::function<void()> lost);
    bool IsRunning() const { return run_ != nullptr; }

private:
    void ShowCounts(const SyncLda::Counts &counts);
    void Ended(SyncLda::End end, const SyncLda::Counts &counts, const QString &cause);

    Program &program_;
    Window &window_;
    std::unique_ptr<Ui::SyncPanel> ui_;
    std::function<void()> lost_;
    std::unique_ptr<Run> run_;
    std::unique_ptr<SyncLda> sync_; // the run that ended stays until the next
};
