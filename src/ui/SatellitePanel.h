// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Scheduler.h"
#include "logging/Satellites.h"

#include <QLabel>
#include <QWidget>
#include <memory>

struct Program;
namespace Ui {
class SatellitePanel;
}

// The satellite part of the entry: the choice of a satellite and what the catalogue says of it.
//
// | control                        | meaning                                             |
// |--------------------------------|-----------------------------------------------------|
// | Frame2                         | all of it; shown while a contact goes via satellite |
// | Combo3                         | name of the satellite                               |
// | Subida, Bajada, Modo, Subtono  | its bands, uplink frequency, mode and tone          |
// | Command15                      | opens the page of the next passes in the browser    |
class SatellitePanel : public QWidget {
    Q_OBJECT

public:
    explicit SatellitePanel(Program &program, QWidget *parent = nullptr);
    ~SatellitePanel() override;

    // Writes the built-in catalogue if there is none.
    void WriteDefaultSatellites();
    // Reads the catalogue into the list. The labels then show its last row.
    void LoadSatellites();
    // Shows the satellite of the last run.
    void RestoreSatellite();

    // Shows or hides Frame2.
    void SetActive(bool active);
    bool IsActive() const;
    QString Satellite() const;
    // The mode that the chosen satellite works in, from its label.
    QString Mode() const;
    UplinkFrequency Uplink() const;
    QWidget *NameField() const;

Q_SIGNALS:
    // A name of the catalogue was chosen; frequency and mode follow from it.
    void SatelliteClicked();

private:
    bool ShowSatellite(const QString &name);
    void ShowLabels(const SatelliteLabels &labels);
    void MovePicture();

    Program &program_;
    std::unique_ptr<Ui::SatellitePanel> ui_;
    QList<SatelliteRow> catalogue_;
    QLabel *Image2_;
    int pictureLeft_ = 0; // twips
    std::unique_ptr<Scheduler::Timer> Timer9_;
};
