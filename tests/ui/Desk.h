// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RecordingDialogs.h"
#include "RecordingLauncher.h"
#include "core/QsoRow.h"
#include "support/Fixtures.h"
#include "support/ManualPacer.h"
#include "support/ManualScheduler.h"
#include "support/RecordingPlayer.h"
#include "support/RecordingPorts.h"
#include "ui/Form1_Main.h"
#include "ui/Program.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QLineEdit>
#include <QTimer>

class Windows;

// A text that a test writes as a plain literal.
struct Words : QString {
    Words() = default;
    Words(const char *utf8)
        : QString(QString::fromUtf8(utf8))
    {
    }
    Words(QString text)
        : QString(std::move(text))
    {
    }
    template <typename A, typename B>
    Words(const QStringBuilder<A, B> &text)
        : QString(text)
    {
    }
};

// The operator's desk: a whole program over a temporary folder, with real store, files, windows and controls. Time
// stands still until the test moves it, dialogs answer at once, keys and clicks come through the window system.
//
// A test furnishes the folder (or leaves it empty for a first run), starts the program, acts, and looks at the
// controls, at what was told, and at the files. Starting again stands for a new process in the same folder.
class Desk {
public:
    Desk();
    ~Desk();
    // Everything as for a desk that was just made.
    void Renew();

    // --- The program folder

    QString Path(const Words &name) const;
    bool Has(const Words &name) const;
    QByteArray Content(const Words &name) const;
    void Write(const Words &name, const QByteArray &content) const;
    // What an operator has after the first run: config.ini (station LU9ZZZ, operator LU1AAA, grid GF05AB, UTC-3) and
    // base0.mdb with the log "Log inicial" and so many contacts, SampleQso(1) the oldest.
    void Furnish(int qsos = 0) const;
    // Sets one line of config.ini, by its key of nine characters.
    void Configure(const Words &key, const Words &value) const;
    static QsoRow SampleQso(int number);
    void Store(const QList<QsoRow> &rows) const;
    // So many contacts of the log, older than all of Furnish, "LU1" the oldest.
    void StoreMany(int count) const;
    // Statements, and the first value of a query, of another program.
    void Sql(const QByteArray &sql) const;
    QString Value(const QByteArray &sql) const;
    // Takes the database away, and brings it back.
    void TakeBase() const;
    void BringBase() const;
    // The database lies on FaultVfs, which does not wait for the disk; this takes away all faults that were set.
    static void HealDisk();
    // What can befall the database, each with what the program says of it; EndTrouble ends any of them.
    struct Trouble {
        QString said;
        std::function<void()> begin;
    };
    std::vector<Trouble> Troubles();
    void EndTrouble();
    // All contacts of all logs as they are in the file, in the order of their ids.
    QList<QsoRow> Rows() const;
    // A column of the newest row of the base.
    QString LastStored(QString QsoRow::*column) const;

    // --- The process

    // The load step. False when the program would end here.
    bool Load();
    void Show();
    // Load, Show, and the second that brings the configuration, the log and the first tick of the clock.
    void Start();
    // Furnish and Start.
    void Begin(int qsos = 0);
    // The process is gone, without a word of leave.
    void Kill();
    void Advance(int milliseconds);

    // --- What the operator sees and does, in the window that is in front (Form1, or the modal one above it)

    Form1 &Main() const;
    QWidget *Front() const;
    template <typename Control = QWidget>
    Control *Find(const Words &name) const
    {
        for (Control *control : Front()->findChildren<Control *>(name))
            if (control->window() == Front())
                return control;
        qFatal("no control %s", qPrintable(name));
    }
    // The text of a field, label, button or frame, or the choice of a list.
    QString Text(const Words &name) const;
    // Those of several, named by blanks, joined by "|".
    QString Texts(const Words &names) const;
    // The same in the main window, whatever window is in front.
    QString OnMain(const Words &name) const;
    // For each name a "+" where the control is enabled, else a "-".
    QString Enabled(const Words &names) const;
    bool Ticked(const Words &name) const { return Find<QAbstractButton>(name)->isChecked(); }
    // A column of a list from top to bottom, joined by "|".
    QString Cells(const Words &list, int column) const;
    // The field that has the focus.
    QString Focus() const;
    // Fills a field without going there.
    void Put(const Words &name, const Words &text) const;

    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;
    // A key that is held down so long that it repeats `repeats` times.
    void Hold(int key, int repeats) const;
    void Type(const Words &text) const;
    void Click(const Words &name) const;
    // Double-clicks a row of a list, by its number from 0.
    void DoubleClick(const Words &name, int row) const;
    void ClickRow(const Words &list, int row) const;
    void ClickTitle(const Words &list, int column) const;
    // Takes an entry out of the open list of a combo box.
    void Choose(const Words &name, const Words &entry) const;
    // Clicks into a field, selects what it holds and types over it.
    void Fill(const Words &name, const Words &text) const;
    void Menu(const char *entry) const;
    // Types the call and everything else that a contact needs, and stores it.
    void Contact(const Words &call) const;

    // Does `open`, and `act` in the modal window that it brings up. A window still open after `act` fails the test.
    void InModal(const std::function<void()> &open, const std::function<void()> &act) const;

    // Opens a window from the menu, lets it fill itself, acts, and closes it where `act` has not; `form` is the window.
    void InWindow(const char *entry, const std::function<void()> &act);
    // While it lives: does `act` once, as soon as `due` among the events of a long work.
    static std::unique_ptr<QTimer> Hand(const std::function<bool()> &due, const std::function<void()> &act);

    // What dialogs have said since the last call, each with "!", "X", "?", "i" or "-" for its icon in front.
    QStringList Told();
    QString Said() { return Told().join(u'|'); }

    QWidget *form = nullptr;
    FixedClock clock;
    RecordingDialogs dialogs;
    RecordingPorts ports;
    std::shared_ptr<ManualPacer::Time> keying = std::make_shared<ManualPacer::Time>(); // moved by Advance()
    RecordingPlayer player;
    std::shared_ptr<RecordingLauncher> launcher = std::make_shared<RecordingLauncher>();
    QStringList unwritable; // files that cannot be written, by name or by whole path
    std::optional<qint64> room; // bytes that each file written line by line gets before its disk is full
    std::optional<int> ended; // exit code of the process that asked to end
    QStringList marks;

    Logbook &OpenLogbook() const;
    Windows &AllWindows() const;
    CqCaller &Caller() const;

private:
    class Files;
    struct Process;

    void Pass(int milliseconds);

    FaultVfs::AsDefault layer_;
    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<Files> files_;
    std::unique_ptr<RawDatabase> other_;
    std::unique_ptr<Process> process_;
};

// The base of tests that have the desk to themselves.
class DeskTest : public QObject, protected Desk {
    Q_OBJECT

protected Q_SLOTS:
    void init() { Renew(); }
    void cleanup() { Kill(); }
};
