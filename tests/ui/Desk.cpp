// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

#include "core/QsoTable.h"
#include "keyer/CqCaller.h"
#include "keyer/SerialLines.h"
#include "support/FailingDevice.h"
#include "ui/Form1_Main.h"
#include "ui/Theme.h"
#include "ui/Windows.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>

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
        : logbook(desk.folder_.path(), *desk.files_, desk.clock)
        , lines(logbook, desk.ports)
        , caller(logbook, lines, desk.player, scheduler)
        , windows(std::make_unique<Windows>())
        , program{logbook, scheduler, desk.dialogs, *windows, lines,
              [&desk] { return std::make_unique<ManualPacer>(desk.keying); }, caller,
              [] { QCoreApplication::processEvents(); }, [&desk](int exitCode) { desk.ended = exitCode; },
              [&desk](const char *name) { desk.marks << QString::fromLatin1(name); }, {}, {}, false, false}
    {
        windows->SetProgram(program);
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
    HealDisk();
}

Desk::~Desk()
{
    Kill();
    ApplyWindowTheme(Theme::Light);
}

// --- The program folder

QString Desk::Path(const QString &name) const { return folder_.filePath(name); }

bool Desk::Has(const QString &name) const { return QFileInfo::exists(Path(name)); }

QByteArray Desk::Content(const QString &name) const
{
    QFile file(Path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Desk::Write(const QString &name, const QByteArray &content) const
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

void Desk::Configure(const QString &key, const QString &value) const
{
    QList<QByteArray> lines;
    for (const QByteArray &line : Content(u"config.ini"_qs).split('\n'))
        if (!line.isEmpty() && !line.startsWith(key.toLatin1()))
            lines << line + '\n';
    lines << key.toLatin1() + value.toLatin1() + "\r\n";
    Write(u"config.ini"_qs, lines.join());
}

QsoRow Desk::SampleQso(int number)
{
    const QDateTime moment = QDateTime(QDate(2026, 1, 1), QTime(0, 0)).addSecs(60 * number);
    QsoRow row;
    row.Modo = number % 2 ? u"SSB"_qs : u"CW"_qs;
    row.Banda = number % 3 ? u"40m"_qs : u"20m"_qs;
    row.Frecuencia = number % 3 ? u"7.090"_qs : u"14.200"_qs;
    row.MyCall = u"LU9ZZZ"_qs;
    row.Estacion = u"CX%1A"_qs.arg(number);
    row.Fecha = moment.date().toString(Qt::ISODate);
    row.Hora = moment.time().toString(u"hh:mm:ss");
    row.RSE = row.RSR = number % 2 ? u"59"_qs : u"599"_qs;
    row.Operador = u"LU1AAA"_qs;
    row.NombreLog = u"Log inicial"_qs;
    row.LdA = u"1"_qs;
    row.Argento = u"Capital"_qs;
    return row;
}

void Desk::Store(const QList<QsoRow> &rows) const
{
    LogStore store(Path(u"base0.mdb"_qs));
    QVERIFY(store.Write([&rows](Session &session) {
        for (const QsoRow &row : rows)
            QsoTable::Insert(session, row);
    }));
}

void Desk::HealDisk()
{
    FaultVfs::Instance().Reset();
    FaultVfs::Instance().SetRecording(false);
    FaultVfs::Instance().SetRealSyncs(false);
}

QList<QsoRow> Desk::Rows() const
{
    LogStore store(Path(u"base0.mdb"_qs));
    const auto rows = store.Read([](Session &session) {
        QList<QsoRow> read;
        Query query =
            session.Prepare(u"SELECT " + QsoColumns::SelectList() + u" FROM Tabla1 WHERE Modo<>'' ORDER BY id");
        while (query.Next())
            read << query.Row();
        return read;
    });
    return rows ? *rows : QList<QsoRow>();
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

// --- What the operator sees and does

Form1 &Desk::Main() const { return process_->windows->Main(); }

QWidget *Desk::Front() const
{
    QWidget *modal = QApplication::activeModalWidget();
    return modal ? modal : &Main();
}

QString Desk::Text(const QString &name) const
{
    const auto *control = Find(name);
    for (const char *property : {"text", "currentText", "title"})
        if (const QVariant text = control->property(property); text.isValid())
            return text.toString();
    return {};
}

QString Desk::Focus() const
{
    QWidget *focused = QApplication::focusWidget();
    if (!focused)
        return u"(none)"_qs;
    return qobject_cast<QComboBox *>(focused->parentWidget()) ? focused->parentWidget()->objectName()
                                                              : focused->objectName();
}

void Desk::Put(const QString &name, const QString &text) const
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

void Desk::Type(const QString &text) const
{
    for (const QChar c : text) {
        const int key = c.toUpper().unicode();
        QTest::sendKeyEvent(QTest::Click, Front()->windowHandle(), Qt::Key(key), QString(c), Qt::NoModifier);
    }
}

void Desk::Click(const QString &name) const
{
    auto *control = Find(name);
    // A box is clicked on its mark; the caption may be shorter than the control.
    const bool box = qobject_cast<QCheckBox *>(control);
    QTest::mouseClick(control, Qt::LeftButton, {}, box ? QPoint(8, control->height() / 2) : QPoint());
    QCoreApplication::processEvents();
}

void Desk::DoubleClick(const QString &name, int row) const
{
    auto *list = Find<QAbstractItemView>(name);
    QModelIndex index = list->model()->index(row, 0);
    while (list->visualRect(index).isEmpty()) // a hidden column
        index = index.siblingAtColumn(index.column() + 1);
    const QPoint place = list->visualRect(index).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
}

void Desk::Choose(const QString &name, const QString &entry) const
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

void Desk::Fill(const QString &name, const QString &text) const
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

void Desk::Contact(const QString &call) const
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
