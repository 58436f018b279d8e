// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

#include "core/CodePage.h"
#include "keyer/CqCaller.h"
#include "keyer/SerialLines.h"
#include "support/FailingDevice.h"
#include "ui/Theme.h"
#include "ui/Windows.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QPointer>
#include <QTreeView>

class Desk::Files : public FileSystem {
public:
    explicit Files(const Desk &desk)
        : desk_(desk)
    {
    }

    Result<void> Replace(const QString &path, const QByteArray &content, Sync sync) override
    {
        if (Refuses(path))
            return Refusal(path);
        return FileSystem::Replace(path, content, sync);
    }
    Result<std::unique_ptr<QIODevice>> OpenForWriting(const QString &path) override
    {
        if (Refuses(path))
            return Refusal(path);
        auto file = FileSystem::OpenForWriting(path);
        if (!file || !desk_.room)
            return file;
        return std::unique_ptr<QIODevice>(std::make_unique<NarrowFile>(*std::move(file), *desk_.room));
    }

private:
    class NarrowFile : public FailingDevice {
    public:
        NarrowFile(std::unique_ptr<QIODevice> file, qint64 room)
            : FailingDevice(*file, room, Trouble::DiskFull)
            , file_(std::move(file))
        {
            NarrowFile::open(WriteOnly);
        }
        ~NarrowFile() override { close(); }

    private:
        std::unique_ptr<QIODevice> file_;
    };

    bool Refuses(const QString &path) const
    {
        return desk_.unwritable.contains(QFileInfo(path).fileName()) || desk_.unwritable.contains(path);
    }
    static Failure Refusal(const QString &path)
    {
        return {u"No se puede escribir el archivo\n%1"_qs.arg(path), Failure::Kind::ReadOnly};
    }

    const Desk &desk_;
};

struct Desk::Process {
    explicit Process(Desk &desk)
        : logbook(desk.folder_->path(), *desk.files_, desk.clock)
        , lines(logbook, desk.ports)
        , caller(logbook, lines, desk.player, scheduler)
        , windows(std::make_unique<Windows>())
        , program{logbook, scheduler, desk.dialogs, *windows, lines,
              [&desk] { return std::make_unique<ManualPacer>(desk.keying); }, caller,
              [] { QCoreApplication::processEvents(); }, [&desk](int exitCode) { desk.ended = exitCode; },
              [&desk](const char *name) { desk.marks << QString::fromLatin1(name); }, {}, {}, false, false}
    {
        windows->SetProgram(program);
        program.launcher = desk.launcher;
        program.manualFolder = QStringLiteral(TORDILLO_SOURCES "/docs/manual");
    }
    ~Process() { windows.reset(); }

    ManualScheduler scheduler;
    Logbook logbook;
    SerialLines lines;
    CqCaller caller;
    std::unique_ptr<Windows> windows;
    Program program;
};

Desk::Desk()
    : files_(std::make_unique<Files>(*this))
{
    Renew();
}

Desk::~Desk()
{
    Kill();
    ApplyWindowTheme(Theme::Light);
}

void Desk::Renew()
{
    Kill();
    ApplyWindowTheme(Theme::Light);
    HealDisk();
    folder_ = std::make_unique<QTemporaryDir>();
    clock = FixedClock();
    dialogs = {};
    ports.clock = {};
    ports.refused.clear();
    ports.gone.clear();
    static_cast<void>(ports.Taken());
    keying = std::make_shared<ManualPacer::Time>();
    player.Close();
    static_cast<void>(player.Taken());
    unwritable.clear();
    room.reset();
    ended.reset();
}

// --- The program folder

QString Desk::Path(const Words &name) const { return folder_->filePath(name); }

bool Desk::Has(const Words &name) const { return QFileInfo::exists(Path(name)); }

QByteArray Desk::Content(const Words &name) const
{
    QFile file(Path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Desk::Write(const Words &name, const QByteArray &content) const
{
    QFile file(Path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

void Desk::Furnish(int qsos) const
{
    Write(u"config.ini"_qs,
        "Estacion=LU9ZZZ\r\nOperador=LU1AAA\r\nDiferUTC=-3\r\nLogenUso=Log inicial\r\n"
        "GridLoca=GF05AB\r\n");
    LogStore store(Path(u"base0.mdb"_qs));
    QVERIFY(store.CreateEmpty());
    QVERIFY(store.Write([qsos](Session &session) {
        QsoTable::InsertLogMarker(session, u"Log inicial"_qs);
        for (int number = 1; number <= qsos; ++number)
            QsoTable::Insert(session, SampleQso(number));
    }));
}

void Desk::Configure(const Words &key, const Words &value) const
{
    QList<QByteArray> lines;
    for (const QByteArray &line : Content(u"config.ini"_qs).split('\n'))
        if (!line.isEmpty() && !line.startsWith(key.toLatin1()))
            lines << line + '\n';
    lines << key.toLatin1() + CodePage::FromText(value) + "\r\n";
    Write(u"config.ini"_qs, lines.join());
}

QsoRow Desk::SampleQso(int number)
{
    const QDateTime moment = QDateTime(QDate(2026, 1, 1), QTime(0, 0)).addSecs(60 * number);
    const QString columns = u"MyCall=LU9ZZZ;Operador=LU1AAA;NombreLog=Log inicial;LdA=1;Argento=Capital;"
                            "Estacion=CX%1A;Fecha=%2;Hora=%3;"_qs.arg(number)
                                .arg(moment.date().toString(Qt::ISODate), moment.time().toString(u"hh:mm:ss"));
    return RowOf(columns + (number % 2 ? u"Modo=SSB;RSE=59;RSR=59;" : u"Modo=CW;RSE=599;RSR=599;")
        + (number % 3 ? u"Banda=40m;Frecuencia=7.090" : u"Banda=20m;Frecuencia=14.200"));
}

void Desk::Store(const QList<QsoRow> &rows) const
{
    LogStore store(Path(u"base0.mdb"_qs));
    QVERIFY(store.Write([&rows](Session &session) {
        for (const QsoRow &row : rows)
            QsoTable::Insert(session, row);
    }));
}

void Desk::StoreMany(int count) const
{
    Sql("WITH RECURSIVE c(n) AS (SELECT 1 UNION ALL SELECT n+1 FROM c WHERE n<" + QByteArray::number(count)
        + ") INSERT INTO Tabla1 (Modo, \"Nombre Log\", MyCall, Estacion, Fecha, Hora, Banda) "
          "SELECT 'CW', 'Log inicial', 'LU9ZZZ', 'LU'||n, '2025-01-01', time(n, 'unixepoch'), '40m' FROM c");
}

void Desk::Sql(const QByteArray &sql) const { QVERIFY2(RawDatabase(Path("base0.mdb")).Run(sql), sql.constData()); }

QString Desk::Value(const QByteArray &sql) const { return RawDatabase(Path("base0.mdb")).Value(sql); }

void Desk::TakeBase() const { QVERIFY(QFile::rename(Path("base0.mdb"), Path("otra"))); }

void Desk::BringBase() const { QVERIFY(QFile::rename(Path("otra"), Path("base0.mdb"))); }

void Desk::HealDisk()
{
    FaultVfs::Instance().Reset();
    FaultVfs::Instance().SetRecording(false);
    FaultVfs::Instance().SetRealSyncs(false);
}

std::vector<Desk::Trouble> Desk::Troubles()
{
    FaultVfs &disk = FaultVfs::Instance();
    return {{u"No queda lugar en el disco"_qs, [&] { disk.SetRoom(0); }},
        {u"El disco falló"_qs, [&] { disk.FailWrites(1, FaultVfs::forever, FaultVfs::Trouble::IoError); }},
        {u"El disco falló"_qs, [&] { disk.FailSyncs(1, FaultVfs::forever); }},
        {u"está en uso por otro programa"_qs,
            [&] {
                other_ = std::make_unique<RawDatabase>(Path("base0.mdb"));
                QVERIFY(other_->Run("BEGIN IMMEDIATE"));
            }},
        {u"No se encuentra la base de datos"_qs, [&] { TakeBase(); }}};
}

void Desk::EndTrouble()
{
    HealDisk();
    other_.reset();
    if (!Has("base0.mdb"))
        BringBase();
}

QList<QsoRow> Desk::Rows() const
{
    LogStore store(Path("base0.mdb"));
    QList<QsoRow> rows = RowsOf(store);
    rows.removeIf([](const QsoRow &row) { return row.Modo.isEmpty(); });
    return rows;
}

QString Desk::LastStored(QString QsoRow::*column) const
{
    const QList<QsoRow> rows = Rows();
    return rows.isEmpty() ? u"(nothing stored)"_qs : rows.last().*column;
}

// --- The process

bool Desk::Load()
{
    Kill();
    ended.reset();
    marks.clear();
    process_ = std::make_unique<Process>(*this);
    return Main().Load();
}

void Desk::Show()
{
    Main().show();
    Main().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&Main()));
}

void Desk::Start()
{
    QVERIFY(Load());
    Show();
    Advance(1000);
}

void Desk::Begin(int qsos)
{
    Furnish(qsos);
    Start();
}

void Desk::Kill() { process_.reset(); }

void Desk::Advance(int milliseconds)
{
    // Timers and the keyer's thread take turns, so that each sees what the other did.
    constexpr int slice = 5;
    for (; keying->service && milliseconds > slice; milliseconds -= slice)
        Pass(slice);
    Pass(milliseconds);
}

void Desk::Pass(int milliseconds)
{
    keying->Advance(milliseconds);
    process_->scheduler.Advance(milliseconds);
    QCoreApplication::processEvents();
}

CqCaller &Desk::Caller() const { return process_->caller; }

Logbook &Desk::OpenLogbook() const { return process_->logbook; }

Windows &Desk::AllWindows() const { return *process_->windows; }

// --- What the operator sees and does

Form1 &Desk::Main() const { return process_->windows->Main(); }

QWidget *Desk::Front() const
{
    QWidget *modal = QApplication::activeModalWidget();
    return modal ? modal : &Main();
}

static QString TextOf(const QWidget *control)
{
    for (const char *property : {"text", "currentText", "title"})
        if (const QVariant text = control->property(property); text.isValid())
            return text.toString();
    return {};
}

QString Desk::Text(const Words &name) const { return TextOf(Find(name)); }

QString Desk::Texts(const Words &names) const
{
    QStringList texts;
    for (const QString &name : names.split(u' '))
        texts << Text(name);
    return texts.join(u'|');
}

QString Desk::OnMain(const Words &name) const { return TextOf(Main().findChild<QWidget *>(name)); }

QString Desk::Enabled(const Words &names) const
{
    QString enabled;
    for (const QString &name : names.split(u' '))
        enabled += Find(name)->isEnabled() ? u'+' : u'-';
    return enabled;
}

QString Desk::Cells(const Words &list, int column) const
{
    QStringList cells;
    const auto *model = Find<QAbstractItemView>(list)->model();
    for (int row = 0; row < model->rowCount(); ++row)
        cells << model->index(row, column).data().toString();
    return cells.join(u'|');
}

QString Desk::Focus() const
{
    QWidget *focused = QApplication::focusWidget();
    if (!focused)
        return u"(none)"_qs;
    return qobject_cast<QComboBox *>(focused->parentWidget()) ? focused->parentWidget()->objectName()
                                                              : focused->objectName();
}

void Desk::Put(const Words &name, const Words &text) const
{
    auto *control = Find(name);
    if (auto *combo = qobject_cast<QComboBox *>(control))
        combo->setCurrentText(text);
    else
        static_cast<QLineEdit *>(control)->setText(text);
}

void Desk::Press(int key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(Front()->windowHandle(), Qt::Key(key), modifiers);
}

void Desk::Hold(int key, int repeats) const
{
    QWindow *window = Front()->windowHandle();
    const QString text = key == Qt::Key_Return ? u"\r"_qs : QString();
    const auto send = [&](QEvent::Type type, bool repeated) {
        qt_handleKeyEvent(window, type, key, Qt::NoModifier, text, repeated, 1);
        QCoreApplication::processEvents();
    };
    send(QEvent::KeyPress, false);
    for (int i = 0; i < repeats; ++i)
        send(QEvent::KeyPress, true);
    send(QEvent::KeyRelease, false);
}

void Desk::Type(const Words &text) const
{
    for (const QChar c : text) {
        const int key = c.toUpper().unicode();
        QTest::sendKeyEvent(QTest::Click, Front()->windowHandle(), Qt::Key(key), QString(c), Qt::NoModifier);
    }
}

void Desk::Click(const Words &name) const
{
    auto *control = Find(name);
    // A box is clicked on its mark; the caption may be shorter than the control.
    const bool box = qobject_cast<QCheckBox *>(control);
    QTest::mouseClick(control, Qt::LeftButton, {}, box ? QPoint(8, control->height() / 2) : QPoint());
    QCoreApplication::processEvents();
}

void Desk::DoubleClick(const Words &name, int row) const
{
    auto *list = Find<QAbstractItemView>(name);
    QModelIndex index = list->model()->index(row, 0);
    while (list->visualRect(index).isEmpty()) // a hidden column
        index = index.siblingAtColumn(index.column() + 1);
    const QPoint place = list->visualRect(index).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
}

void Desk::ClickRow(const Words &list, int row) const
{
    auto *view = Find<QAbstractItemView>(list);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(view->model()->index(row, 0)).center());
}

void Desk::ClickTitle(const Words &list, int column) const
{
    QHeaderView *title = Find<QTreeView>(list)->header();
    const QPoint place(title->sectionViewportPosition(column) + 8, title->height() / 2);
    QTest::mouseClick(title->viewport(), Qt::LeftButton, {}, place);
}

void Desk::Choose(const Words &name, const Words &entry) const
{
    auto *combo = Find<QComboBox>(name);
    const int row = combo->findText(entry);
    QVERIFY2(row >= 0, qPrintable(entry));
    combo->setFocus();
    combo->showPopup();
    combo->view()->setCurrentIndex(combo->model()->index(row, 0));
    QTest::keyClick(combo->view(), Qt::Key_Return);
    // Offscreen nobody gives the activation back when the list closes.
    Front()->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(Front()));
    QCoreApplication::processEvents();
}

void Desk::Fill(const Words &name, const Words &text) const
{
    Find(name)->setFocus();
    Press(Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        Press(Qt::Key_Delete);
    Type(text);
}

void Desk::Menu(const char *entry) const
{
    auto *action = Main().findChild<QAction *>(QString::fromLatin1(entry));
    QVERIFY2(action && action->isEnabled(), entry);
    action->trigger();
    QCoreApplication::processEvents();
}

void Desk::Contact(const Words &call) const
{
    Fill(u"Corresponsal"_qs, call);
    Find(u"Obs"_qs)->setFocus();
    QCoreApplication::processEvents();
    Press(Qt::Key_Return);
}

void Desk::InModal(const std::function<void()> &open, const std::function<void()> &act) const
{
    bool acted = false, leftOpen = false;
    const QPointer<QWidget> before(QApplication::activeModalWidget());
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        const QPointer<QWidget> modal(QApplication::activeModalWidget());
        if (acted || !modal || modal == before || !modal->isVisible())
            return;
        acted = true;
        poll.stop();
        static_cast<void>(QTest::qWaitForWindowActive(modal));
        act();
        leftOpen = modal && modal->isVisible();
        if (leftOpen)
            modal->hide();
    });
    poll.start(0);
    open();
    QCoreApplication::processEvents();
    // Offscreen nobody gives the activation back to the window below.
    if (Front()->isVisible()) {
        Front()->activateWindow();
        static_cast<void>(QTest::qWaitForWindowActive(Front()));
    }
    QVERIFY2(acted, "no window came up");
    QVERIFY2(!leftOpen, "the window was not left");
}

void Desk::InWindow(const char *entry, const std::function<void()> &act)
{
    InModal([&] { Menu(entry); },
        [&] {
            form = Front();
            const QPointer<QWidget> window(form);
            Advance(0);
            act();
            if (window && window->isVisible())
                window->close();
        });
}

std::unique_ptr<QTimer> Desk::Hand(const std::function<bool()> &due, const std::function<void()> &act)
{
    auto hand = std::make_unique<QTimer>();
    QObject::connect(hand.get(), &QTimer::timeout, hand.get(), [due, act, hand = hand.get()] {
        if (!due())
            return;
        hand->stop();
        act();
    });
    hand->start(0);
    return hand;
}

QStringList Desk::Told()
{
    QStringList told;
    for (const RecordingDialogs::Shown &dialog : dialogs.shown) {
        static constexpr char16_t signs[] = u"-i!X?";
        told << QChar(signs[static_cast<int>(dialog.icon)]) + dialog.text;
    }
    dialogs.shown.clear();
    return told;
}
