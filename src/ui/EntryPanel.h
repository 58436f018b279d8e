// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "logging/EntryRules.h"
#include "logging/QsoStore.h"
#include "logging/Satellites.h"
#include "ui/Dialogs.h"

#include <QWidget>
#include <memory>
#include <optional>

struct Program;
class EntryClock;
class QLineEdit;
namespace Ui {
class EntryPanel;
}

// The entry area of the main window. It owns its controls and knows what each field holds and takes; what Enter does
// and when a contact is stored is the window's business.
//
// | control                | meaning                               | guarded by                            |
// |------------------------|---------------------------------------|---------------------------------------|
// | Corresponsal           | the correspondent's call              | KeyFilter::Callsign, LooksLikeCallsign |
// | Fecha, Hora            | UTC, or local time with Label11 "LU"  | CheckFecha, CheckHora                 |
// | RSE, RSR               | reports sent and received             | ValidateReport                        |
// | mhz, Text1, Label7     | megahertz, kilohertz, band            | BandOfFields                          |
// | Text2                  | correspondent's grid                  | KeepGridShape, GridLengthAllowed      |
// | Obs                    | remarks                               |                                       |
// | Combo1                 | mode                                  |                                       |
// | Combo2                 | list of bands, without effect         |                                       |
// | SOTA, POTA_IN          | references of the correspondent       | upper case                            |
// | MYSOTA, MY_POTA        | own references, in frame activador    | upper case                            |
// | Label2, Label3, Label8 | station, operator, own grid           |                                       |
// | Label18                | country or province of the call       |                                       |
// | Check1, Label11        | time by hand; "LU" or "UTC"           |                                       |
// | Check2, Check3, Check4 | via satellite, keep Obs, activation   |                                       |
// | Command7, 13, 14       | the call in the log, in QRZ, in LdA   |                                       |
class EntryPanel : public QWidget {
    Q_OBJECT

public:
    explicit EntryPanel(Program &program, QWidget *parent = nullptr);
    ~EntryPanel() override;

    // The number of the entry field that had the focus last, 1 to 8.
    int EntryField() const { return entryField_; }
    // Until the first tick of the clock nothing moves the focus or writes a file.
    bool ClockRunning() const;

    // The recorded CQ has its place at the end of the bottom line.
    void PlaceCaller(QWidget *caller);

    // The window's start: lists and initial texts, then what mem.ini and the exit memory held.
    void FillLists();
    void RestoreFieldMemory();
    void RestoreExitMemory();
    // The fields that the configuration feeds, and the captions it sets.
    void ShowConfiguration();
    void ShowCaptions();

    // What the rules need to see of the fields.
    EntryRules::EntryFields Fields() const;
    QWidget *FieldOf(EntryRules::EntryFocus focus) const;
    void FocusField(EntryRules::EntryFocus focus);
    void FocusCorresponsal() { FocusField(EntryRules::EntryFocus::Corresponsal); }
    QString Call() const;
    QWidget *ModeField() const;

    // The contact as the fields give it, date and time as typed. Nothing is emptied.
    NewQso ReadQso() const;
    bool QtrManual() const;
    bool ViaSatellite() const;
    // Label11 as the time rules ask for it.
    bool ZoneVisible() const;
    QString ZoneCaption() const;
    // After the store: what does not stay for the next contact is emptied, Label4 gets the id.
    void ClearAfterStore(qint64 id);
    // The contact entered last since the start, unless it was deleted since.
    std::optional<qint64> LastId() const;
    void RememberQso(qint64 id);
    void ForgetQso(qint64 id);
    // Ctrl+W: empties call and grid.
    void WipeCall();
    void SaveFieldMemory();
    void SaveExitMemory();

    // Satellite entry: mode and frequency are kept aside and locked while it lasts.
    void EnterSatelliteMode(const UplinkFrequency &uplink);
    void LeaveSatelliteMode();
    // A satellite was chosen: its frequency and mode are put into the fields.
    void ApplySatellite(const UplinkFrequency &uplink, const QString &mode);
    void TickViaSatellite(bool ticked);

    // What a lookup found, in the place of what the fields held.
    void PutRemarks(const QString &text);
    void PutGrid(const QString &grid);

    // A line about what is going on, beside the lookup buttons; empty hides it.
    void ShowActivity(const QString &text);
    void EndActivity(const QString &text);

    // The window forwards these, and the ticks of the clock.
    void Entered(QWidget *field);
    void Left(QWidget *field);
    void Tick();

Q_SIGNALS:
    void StoreClicked();
    void CallQsosClicked();
    void QrzClicked();
    void LdaClicked();
    void SummitsClicked();
    void ViaSatelliteClicked(bool ticked);
    // A field was left with a content that it must not keep; the focus goes back to it after the message.
    void FieldRefused(QWidget *field, const QString &message);

private:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void AttachFilters();
    void Connect();
    void ConnectChecks();
    void CallChanged();
    void CallLeft();
    void ShowCountry();
    void CheckReport(QLineEdit *field);
    void KilohertzLeft();
    QString UpdateBand();
    void ShowBand();
    void ModeClicked();
    void MegahertzClicked();
    void ShowActivation();
    void UnlockWithoutBand();
    void SetFrequency(const QString &mhz, const QString &khz);

    Program &program_;
    std::unique_ptr<Ui::EntryPanel> ui_;
    EntryClock *clock_ = nullptr;
    int entryField_ = 1;
    QLineEdit *clickedInto_ = nullptr; // got the focus by a click whose button is still down
    QString warnedFrequency_; // the out-of-band value that was told last
    struct Saved {
        QString mode, mhz, khz;
    };
    std::optional<Saved> beforeSatellite_;
};
