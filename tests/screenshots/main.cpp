// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Takes a picture of every window, in both themes, at the size it has on the present screen:
//   screenshots <folder for the pictures> <word for this screen in the file names>
#include "contest/ContestEntry.h"
#include "contest/ContestLogs.h"
#include "contest/ContestLookup.h"
#include "core/Logbook.h"
#include "keyer/CqCaller.h"
#include "keyer/KeyerPacer.h"
#include "keyer/SerialLines.h"
#include "logging/LogNames.h"
#include "logging/Provinces.h"
#include "logging/QsoEdit.h"
#include "logging/QsoStore.h"
#include "support/LocalServer.h"
#include "support/RecordingPorts.h"
#include "ui/Form10_About.h"
#include "ui/Form11_Satellites.h"
#include "ui/Form12_AdifImport.h"
#include "ui/Form13_Analysis.h"
#include "ui/Form14_Provinces.h"
#include "ui/Form15_Backup.h"
#include "ui/Form16_Profiles.h"
#include "ui/Form17_CallQsos.h"
#include "ui/Form18_Closing.h"
#include "ui/Form1_Main.h"
#include "ui/Form20_Macros.h"
#include "ui/Form21_PhoneImportHelp.h"
#include "ui/Form22_Keyboard.h"
#include "ui/Form2_Settings.h"
#include "ui/Form33_LookupResult.h"
#include "ui/Form3_OpenLog.h"
#include "ui/Form4_Contest.h"
#include "ui/Form5_EditQso.h"
#include "ui/Form6_Search.h"
#include "ui/Form7_EditContestQso.h"
#include "ui/Form8_ContestLogs.h"
#include "ui/Form9_CabrilloHeader.h"
#include "ui/KeyerPanel.h"
#include "ui/KeyerTest.h"
#include "ui/Manual.h"
#include "ui/Program.h"
#include "ui/RealDialogs.h"
#include "ui/RealPlayer.h"
#include "ui/Spanish.h"
#include "ui/Theme.h"
#include "ui/Windows.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>
#include <functional>

namespace {

class PictureClock : public Clock {
public:
    QDateTime Now() const override { return QDateTime(QDate(2026, 11, 24), QTime(18, 15, 30)); }
};

void MakeLog(Logbook &logbook)
{
    const QStringList calls{u"LU1ABC"_qs, u"CX2ZZ"_qs, u"PY1AAA/P"_qs, u"LU5DX/W"_qs, u"CE3ABC"_qs, u"EA4KD"_qs,
        u"LW3EK"_qs, u"K1JT"_qs, u"LU7YS"_qs, u"ZP5AA"_qs};
    for (int i = 0; i < 46; ++i) {
        NewQso qso;
        qso.call = calls[i % calls.size()];
        qso.band = i % 3 ? u"40m"_qs : u"20m"_qs;
        qso.mode = i % 4 ? u"SSB"_qs : u"CW"_qs;
        qso.reportSent = qso.reportReceived = i % 4 ? u"59"_qs : u"599"_qs;
        qso.date = QDate(2026, 11, 24).addDays(-i / 9).toString(u"dd/MM/yyyy");
        qso.time = QTime(21, 10).addSecs(-i * 420).toString(u"hh:mm:ss");
        qso.station = u"LU9ZZZ"_qs;
        qso.operatorCall = u"LU1AAA"_qs;
        qso.remarks = i % 5 ? QString() : u"Juan, cerca de Córdoba"_qs;
        qso.frequency = i % 3 ? u"7.085"_qs : u"14.250"_qs;
        qso.ownGrid = u"GF05AB"_qs;
        qso.grid = i % 2 ? u"FF78SK"_qs : QString();
        if (!AddQso(logbook.Store(), logbook.LogInUse, qso))
            qFatal("the sample log could not be made");
    }
}

void SetUpStation(Logbook &logbook, bool dark)
{
    logbook.configuration.Pantalla = dark;
    logbook.configuration.Estacion = u"LU9ZZZ"_qs;
    logbook.configuration.Operador = u"LU1AAA"_qs;
    logbook.configuration.DiferUTC = u"-3"_qs;
    logbook.configuration.GridLoca = u"GF05AB"_qs;
    logbook.configuration.ArcAudio = u"/home/lu9zzz/Música/cq concurso 2026.mp3"_qs;
    const bool first = !HasConfig(logbook);
    if (!SaveConfig(logbook, true))
        qFatal("the sample configuration could not be saved");
    if (first)
        MakeLog(logbook);
    LoadConfig(logbook);
}

void Take(QWidget &window, const QString &file)
{
    window.show();
    for (int round = 0; round < 3; ++round)
        QApplication::processEvents(QEventLoop::AllEvents, 50);
    window.grab().save(file);
}

// Opens a window that holds the caller until it is closed, takes its picture meanwhile, and closes it.
void TakeModal(QWidget &window, const QString &file, const std::function<void()> &open)
{
    QTimer::singleShot(300, &window, [&] {
        Take(window, file);
        window.hide();
    });
    open();
}

void MakeContest(Logbook &logbook, const QString &name)
{
    if (!CreateContest(logbook.Store(), name, SerieType::Incremental))
        qFatal("the sample contest could not be made");
    const QStringList calls{u"LU1ABC"_qs, u"CX2ZZ"_qs, u"PY1AAA"_qs, u"LU5DX"_qs, u"CE3ABC"_qs, u"LW3EK"_qs};
    for (int i = 0; i < 30; ++i) {
        ContestFields fields{u"LU9ZZZ"_qs, u"24/11/2026"_qs, QTime(20, i).toString(u"hh:mm"), calls[i % 6],
            i % 3 ? u"CW"_qs : u"SSB"_qs, i % 2 ? u"40m"_qs : u"20m"_qs, u"7"_qs, u"010"_qs, QString::number(i + 1),
            QString::number(100 + i), name, SerieType::Incremental};
        if (!StoreContestQso(logbook.Store(), BuildContestRow(fields)))
            qFatal("the sample contest could not be stored");
    }
}

void TakeContest(Program &program, const std::function<QString(const char *)> &path)
{
    const QString name = u"CQWW "_qs + QString::number(program.logbook.configuration.Pantalla);
    MakeContest(program.logbook, name);
    program.master =
        MasterCheck({u"LU1ABC"_qs, u"LU1ABD"_qs, u"LU7ABC"_qs, u"LU2ABC"_qs, u"LW3EK"_qs, u"LW1EK"_qs, u"LW5EKA"_qs});
    TakeModal(program.windows.ContestLogs(), path("Form8"),
        [&] { static_cast<void>(program.windows.ContestLogs().Choose()); });
    Form4 &form4 = program.windows.Contest();
    QTimer::singleShot(300, &form4, [&] {
        auto *modes = form4.findChild<QComboBox *>(u"Combo1"_qs);
        form4.findChild<QCheckBox *>(u"Check8"_qs)->setChecked(true);
        // One with contacts of before, one without.
        for (const auto &[file, call] : {std::pair("Form4_CW", u"LW3EK"_qs), std::pair("Form4_SSB", u"LU1"_qs)}) {
            modes->setCurrentText(QString::fromLatin1(file).mid(6));
            Q_EMIT modes->activated(modes->currentIndex());
            form4.findChild<QLineEdit *>(u"Corresponsal"_qs)->setText(call);
            Take(form4, path(file));
        }
        form4.hide();
    });
    form4.Enter({name, SerieType::Incremental, 30});
    const auto last = LastContestQso(program.logbook.Store(), name);
    Form7 &form7 = program.windows.EditContestQso(form4);
    const auto rows = ContestRows(program.logbook.Store(), name);
    Form9 &form9 = program.windows.CabrilloHeader(form4);
    TakeModal(
        form9, path("Form9"), [&] { form9.ShowHeader(name, CabrilloWriter::BuildLines(*rows, u"LU9ZZZ"_qs), *rows); });
    MacroTexts macros = DefaultMacros();
    Form20 &form20 = program.windows.Macros(form4);
    TakeModal(form20, path("Form20"), [&] { static_cast<void>(form20.Edit(macros)); });
    Form22 &form22 = program.windows.Keyboard(form4);
    form22.findChild<QPlainTextEdit *>(u"Text1"_qs)->setPlainText(u"LU1ABC DE LU9ZZZ TNX QSO >>73<<"_qs);
    TakeModal(
        form22, path("Form22"), [&] { static_cast<void>(form22.Send(form4.findChild<KeyerPanel *>()->Keyer())); });
    KeyerTest &trial = program.windows.TestKeyer(form4);
    TakeModal(trial, path("KeyerTest"), [&] { trial.ShowTest(); });
    TakeModal(form7, path("Form7"), [&] { static_cast<void>(form7.Edit(**last, 0)); });
    TakeModal(program.windows.Analysis(), path("Form13"), [&] { program.windows.Analysis().ShowAnalysis(); });
}

// The windows on the web, with a server of our own behind them.
void TakeOnline(Program &program, const std::function<QString(const char *)> &path)
{
    Logbook &logbook = program.logbook;
    LookupResult result{LookupResult::Service::Lda, u"Log de Argentina"_qs,
        u"LU1ABC\nAlias: LU1ABC/D\nJuan Pérez\nMitre 123\nMendoza\nGrid Locator: FF78SK\njuan@correo.example\n"
        "último QSO: 24/11/2026\n"_qs,
        u"Juan Pérez"_qs, u"juan@correo.example"_qs, u"FF78SK"_qs};
    Form1 &form1 = program.windows.Main();
    Form33 &form33 = program.windows.LookupResult();
    TakeModal(form33, path("Form33"), [&] { form33.ShowResult(form1, result, true); });
    program.windows.Closing().ShowStep(9);
    Take(program.windows.Closing(), path("Form18"));
    program.windows.Closing().hide();

    LocalServer server;
    server.InTurn({"QSO OK!", "QSO OK!", "QSO duplicado!", "QSO OK!", "Call ni Alias registrado", "QSO OK!"});
    QFile services(logbook.PathOf(u"servicios.ini"_qs));
    if (!services.open(QIODevice::WriteOnly))
        qFatal("the services could not be pointed to the server");
    services.write(
        "[servicios]\nlda=" + server.Base().toLatin1() + "\nlda_segura_2=" + server.Base().toLatin1() + '\n');
    services.close();
    logbook.configuration.LDAQuser = logbook.configuration.LDAQpass = u"yo"_qs;
    Form6 &form6 = program.windows.Search();
    QTimer::singleShot(100, &form6, [&] { form6.findChild<QPushButton *>(u"Command6"_qs)->click(); });
    QTimer::singleShot(150, &form6, [] {
        if (auto *box = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
            box->accept();
    });
    TakeModal(form6, path("Form6_subida"), [&] { form6.ShowSearch(); });

    server.answer = [](const LocalServer::Request &request) -> LocalServer::Answer {
        const QString call = request.Value(u"sucall"_qs);
        if (call.endsWith(u"EK"))
            return "El call no es de Argentina";
        return QByteArray("LU9ZZZ " + call.toLatin1() + " 40m SSB 24/11/2026 2110 "
            + (call.endsWith(u"ABC") ? "duplicado!Y" : "Guardado"));
    };
    Runs runs;
    Run reading(runs, {});
    const auto selection = SelectForSync(logbook.Store(), logbook.LogInUse, reading);
    Form13 &form13 = program.windows.Analysis();
    QTimer::singleShot(100, &form13, [] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
            box->buttons().first()->click();
    });
    TakeModal(form13, path("Form13_subida"), [&] {
        form13.ShowUpload(*selection, {server.Base(), u"yo"_qs, u"yo"_qs});
    });
}

// A log of some years: much of 40 and 20 m, little of the rest.
ProvinceStatistics SampleProvinces()
{
    ProvinceStatistics statistics;
    for (int province = 0; province < ProvinceTable::provinces; ++province)
        for (int band = 0; band < ProvinceTable::bands; ++band) {
            const int chance = (province * 37 + band * band * 11 + province * band * 5) % 100;
            const int wanted = band == 3 ? 92 : band == 5 || band == 1 ? 60 : band == 11 ? 30 : 22;
            if (chance < wanted)
                statistics.tally.Add({ProvinceNames()[province], ProvinceTable::BandNames()[band], {},
                    chance < wanted / 2   ? u"2"_qs
                        : chance % 3 == 0 ? u"0"_qs
                                          : u"1"_qs,
                    u"%1%2%3"_qs.arg(band % 2 ? u"GF"_qs : u"FF"_qs).arg(province % 10).arg(band % 10)});
        }
    return statistics;
}

void TakeProvinces(Program &program, const std::function<QString(const char *)> &path)
{
    Form14 &form14 = program.windows.Provinces();
    Form1 &form1 = program.windows.Main();
    const QString source = u"Log: "_qs + program.logbook.LogInUse;
    TakeModal(form14, path("Form14"), [&] { form14.ShowStatistics(form1, source, SampleProvinces()); });
    Runs runs;
    Run run(runs, [] {});
    const auto ofLog = StatisticsOfLog(program.logbook.Store(), program.logbook.LogInUse, 46, run);
    QTimer::singleShot(150, &form14, [&] { form14.findChild<QCheckBox *>(u"Check1"_qs)->setChecked(true); });
    TakeModal(form14, path("Form14_QSOs"), [&] { form14.ShowStatistics(form1, source, *ofLog); });
    for (const auto &[file, contacts] :
        {std::pair("Form14_miembros", false), std::pair("Form14_QSOs_miembros", true)}) {
        QTimer::singleShot(150, &form14, [&, on = contacts] {
            form14.findChild<QWidget *>(u"Frame5"_qs)->show();
            auto *members = form14.findChild<QListWidget *>(u"List3"_qs);
            members->clear();
            members->addItem(u"LU1ABC Juan Pérez>24/11/2026"_qs);
            form14.findChild<QCheckBox *>(u"Check1"_qs)->setChecked(on);
        });
        TakeModal(
            form14, path(file), [&] { form14.ShowStatistics(form1, source, contacts ? *ofLog : SampleProvinces()); });
    }
}

void TakeManual(Program &program, const std::function<QString(const char *)> &path)
{
    Manual &book = program.windows.Book();
    for (const auto &[file, window] : {std::pair("Manual", "Form1"), std::pair("Manual_cables", "KeyerTest")}) {
        QWidget asking;
        asking.setObjectName(QString::fromLatin1(window));
        book.ShowFor(asking);
        Take(book, path(file));
    }
    book.hide();
}

void TakeAll(Program &program, const std::function<QString(const char *)> &path)
{
    Logbook &logbook = program.logbook;
    Form1 &form1 = program.windows.Main();
    if (!form1.Load())
        qFatal("the main window did not load");
    form1.ShowConfiguration();
    form1.SetArchivoMenu(true);
    form1.LoadLogPage(1);
    form1.findChild<QLineEdit *>(u"Corresponsal"_qs)->setText(u"LU1ABC"_qs);
    Take(form1, path("Form1"));
    for (const char16_t *box : {u"Check1", u"Check2", u"Check4"})
        form1.findChild<QCheckBox *>(QString::fromUtf16(box))->click();
    Take(form1, path("Form1_todo"));
    Form2 &form2 = program.windows.Settings();
    form2.FillLists();
    Take(form2, path("Form2"));
    form2.hide();
    const Result<QList<QsoRow>> rows = QsosWithCall(logbook.Store(), logbook.LogInUse, u"LU"_qs);
    Form17 &form17 = program.windows.CallQsos();
    TakeModal(form17, path("Form17"), [&] { form17.Show(u"LU"_qs, *rows); });
    Form6 &form6 = program.windows.Search();
    QTimer::singleShot(300, &form6, [&] {
        Take(form6, path("Form6"));
        auto *list = form6.findChild<QTreeView *>(u"ListView2"_qs);
        list->setCurrentIndex(list->model()->index(3, 2));
        list->header()->setFocus();
        Take(form6, path("Form6_titulos"));
        form6.hide();
    });
    form6.ShowSearch();
    const auto newest = QsoEdit::FindQso(logbook.Store(), logbook.LogInUse, std::nullopt);
    Form5 &form5 = program.windows.EditQso();
    TakeModal(form5, path("Form5"), [&] { form5.OpenEditFromList(**newest, Form5::EditCaller::None); });
    TakeModal(form5, path("Form5_F5"), [&] { form5.EditByKey(**newest); });
    const auto logs = ListLogs(logbook.Store());
    TakeModal(
        program.windows.OpenLog(), path("Form3"), [&] { static_cast<void>(program.windows.OpenLog().Choose(*logs)); });
    TakeModal(program.windows.About(), path("Form10"), [&] { program.windows.About().ShowModal(); });
    Form11 &form11 = program.windows.Satellites([] {});
    TakeModal(form11, path("Form11_cerrado"), [&] { form11.ShowEditor(); });
    QTimer::singleShot(100, &form11, [&] {
        auto *list = form11.findChild<QListWidget *>();
        list->setCurrentRow(11);
        Q_EMIT list->itemClicked(list->currentItem());
    });
    TakeModal(form11, path("Form11"), [&] { form11.ShowEditor(); });
    TakeModal(program.windows.Profiles(), path("Form16"), [&] { program.windows.Profiles().ShowProfiles(); });
    TakeModal(program.windows.AdifImport(), path("Form12"), [&] { program.windows.AdifImport().ShowImport(); });
    TakeModal(program.windows.Backup(), path("Form15"), [&] { program.windows.Backup().OpenBackupWindow(); });
    Form21 &form21 = program.windows.PhoneImportHelp(form1);
    TakeModal(form21, path("Form21"), [&] { form21.ShowModal(); });
    TakeManual(program, path);
    TakeProvinces(program, path);
    TakeContest(program, path);
    TakeOnline(program, path);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (argc != 3)
        qFatal("usage: screenshots <folder> <word>");
    InstallSpanish(application);
    SetUpLook(application);
    const QDir target(QString::fromLocal8Bit(argv[1]));
    target.mkpath(u"."_qs);
    const QTemporaryDir folder;
    FileSystem files;
    const PictureClock clock;
    EventLoopScheduler scheduler;
    RealDialogs dialogs;
    RecordingPorts ports;

    for (const bool dark : {false, true}) {
        Logbook logbook(folder.path(), files, clock);
        SetUpStation(logbook, dark);
        SerialLines lines(logbook, ports);
        RealPlayer player;
        CqCaller caller(logbook, lines, player, scheduler);
        Windows windows;
        Program program{logbook, scheduler, dialogs, windows, lines, MakeThreadPacer, caller,
            [] { QApplication::processEvents(); }, [](int) {}, [](const char *) {}, {}, {}, false, false};
        program.manualFolder = QStringLiteral(TORDILLO_SOURCES "/docs/manual");
        windows.SetProgram(program);
        program.dxcc.AddLine(u"LW;13;14;SA;Argentina");
        ApplyWindowTheme(dark ? Theme::Dark : Theme::Light);
        const QString ending =
            u"_"_qs + QString::fromLocal8Bit(argv[2]) + (dark ? u"_oscuro.png"_qs : u"_claro.png"_qs);
        TakeAll(program, [&](const char *name) { return target.filePath(QString::fromLatin1(name) + ending); });
    }
    return 0;
}
