// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ServiceDesk.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"
#include "ui/Windows.h"

#include <QAction>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

using Manner = LocalServer::Manner;

// The program's own site, and the test of the LdA account.
class TestSiteCommands : public QObject {
    Q_OBJECT

    std::unique_ptr<ServiceDesk> desk_;

    // Begins the test in the settings, whose window is left again.
    void InAccountTest(const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->Menu("conf"); },
            [&] {
                desk_->Click(u"Command4"_qs);
                act();
                desk_->Click(u"Command2"_qs);
            });
    }
    QString Colour() const { return desk_->Find(u"Label3"_qs)->palette().color(QPalette::WindowText).name(); }

private Q_SLOTS:
    void init()
    {
        desk_ = std::make_unique<ServiceDesk>();
        desk_->Start();
    }
    void cleanup() { desk_.reset(); }

    void TheMenuComparesVersions()
    {
        desk_->server.Always("2.1.40\r\n");
        desk_->Menu("ac");
        QCOMPARE(desk_->NextTold(), QStringList({u"!Su versión: 2.1.34\nen la Web: 2.1.40\n\ndebe actualizar!"_qs}));
        QCOMPARE(desk_->Asked(), QStringList({u"/web/assets/compact/version.dat"_qs}));
        desk_->server.Always("2.1.34");
        desk_->Menu("ac");
        QCOMPARE(desk_->NextTold(), QStringList({u"!Su versión: 2.1.34\nen la Web: 2.1.34\n\nestá actualizado"_qs}));
        // A page without a version says nothing, a broken line is told, and so is one that does not answer.
        desk_->server.Always("<html>404</html>");
        desk_->Menu("ac");
        QVERIFY(desk_->Until([&] { return desk_->server.requests.size() == 2; }));
        QTest::qWait(50);
        desk_->server.Always(Manner::Hangup);
        desk_->Menu("ac");
        QCOMPARE(desk_->NextTold(), QStringList({u"XLa conexión con 127.0.0.1 se cortó.\nError 2"_qs}));
        desk_->server.Always(Manner::Silent);
        desk_->Menu("ac");
        QCOMPARE(desk_->NextTold(100), QStringList({u"XEl sitio no respondió a tiempo.\nError 4"_qs}));
    }

    void TheMenuFetchesANewerMasterList()
    {
        desk_->Write(u"master.txt"_qs, "#01/01/2025#\n\rLU1ABC\n\r");
        desk_->Start();
        desk_->server.Always("#02/01/2025#\nLU1ABC\nLU2ABC\n");
        desk_->Menu("amc");
        auto *activity = desk_->Find<QLabel>(u"Label20"_qs);
        QCOMPARE(activity->text(), u"Acualización MasterCheck ..."_qs);
        QVERIFY(!desk_->Main().findChild<QAction *>(u"amc"_qs)->isEnabled());
        QCOMPARE(desk_->NextTold(),
            QStringList({u"iSu archivo Master check con fecha 01/01/2025 estaba desacualizado!\nen la web tiene fecha: "
                         "02/01/2025\nYa está actualizado!"_qs}));
        QCOMPARE(desk_->Content(u"master.txt"_qs), "#02/01/2025#\n\rLU1ABC\n\rLU2ABC\n\r");
        QVERIFY(!activity->isVisible());
        // Loaded, so the same list is up to date now; what is no list leaves it alone.
        desk_->Menu("amc");
        QCOMPARE(
            desk_->NextTold(), QStringList({u"!Su archivo Master check con fecha 02/01/2025 está acualizado!"_qs}));
        const LocalServer::Answer bad[] = {{"#03/01/2025#\nmedia", 500}, "<html>", Manner::Hangup};
        for (const LocalServer::Answer &answer : bad) {
            desk_->server.Always(answer);
            desk_->Menu("amc");
            QCOMPARE(desk_->NextTold(), QStringList({u"!No parece haber conexión de internet!"_qs}));
        }
        QVERIFY(desk_->Content(u"master.txt"_qs).contains("LU2ABC"));
        desk_->server.Always("#03/01/2025#\n");
        desk_->unwritable = {u"master.txt"_qs};
        desk_->Menu("amc");
        QVERIFY(desk_->NextTold().value(0).startsWith(u"XNo se puede escribir el archivo"));
    }

    void ClosingTakesFiveSecondsAndSaysSo()
    {
        desk_->Main().findChild<QPushButton *>(u"Command10"_qs)->click();
        desk_->Advance(200);
        QWidget *closing = nullptr;
        for (QWidget *window : QApplication::topLevelWidgets())
            if (window->objectName() == u"Form18" && window->isVisible())
                closing = window;
        QVERIFY(closing);
        QCOMPARE(closing->findChild<QLabel *>()->text(), u"Aguarde, cerrando Tordillo Compact2 ...1/25"_qs);
        desk_->Advance(4600);
        QCOMPARE(closing->findChild<QProgressBar *>()->value(), 24);
        QVERIFY(desk_->Until([&] { return desk_->server.requests.size() == 1; }));
        desk_->Advance(200);
        QVERIFY(!closing->isVisible());
        QVERIFY(desk_->Until([&] { return desk_->server.requests.size() == 2; }));
        QCOMPARE(desk_->server.requests.last().Value(u"comando"_qs) + desk_->server.requests.last().Value(u"prog"_qs),
            u"offTordillo Compact 2"_qs);
        desk_->Main().close();
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(desk_->ended.value_or(-1), 0);
    }

    void TheAccountTestShowsWhatComesBack()
    {
        desk_->server.Always("<html><body>Usuario y contrase\u00f1a correctos</body></html>");
        InAccountTest([&] {
            QCOMPARE(desk_->Text(u"Label3"_qs), u"user=yo@x\nmicall=LU9ZZZ\n"_qs);
            QVERIFY(!desk_->Find(u"Command4"_qs)->isEnabled());
            QVERIFY(desk_->Until([&] { return desk_->Find(u"Command4"_qs)->isEnabled(); }));
            QCOMPARE(desk_->Text(u"Label3"_qs), u"Usuario y contraseña correctos"_qs);
        });
        const LocalServer::Request request = desk_->server.requests.first();
        QCOMPARE(request.Path(), u"/lda/php/tordillo_c2.php"_qs);
        QCOMPARE(request.Value(u"user"_qs) + request.Value(u"micall"_qs) + request.Value(u"pass"_qs),
            u"yo@xLU9ZZZ"_qs + ServiceDesk::password);
        desk_->server.Always(Manner::Silent);
        InAccountTest([&] {
            const QString plain = Colour();
            desk_->Advance(14000);
            QCOMPARE(desk_->Find<QProgressBar>(u"ProgressBar1"_qs)->value(), 14);
            desk_->Advance(1000);
            QCOMPARE(desk_->Text(u"Label3"_qs), u"No parace haber conexión con internet!"_qs);
            QVERIFY(Colour() != plain && Colour() == u"#ff0000");
            QCOMPARE(desk_->Find<QProgressBar>(u"ProgressBar1"_qs)->value(), 0);
            QVERIFY(desk_->Find(u"Command4"_qs)->isEnabled());
        });
        // Left while it waits: nothing comes after.
        InAccountTest([] {});
        desk_->Advance(20000);
        desk_->InModal([&] { desk_->Menu("conf"); },
            [&] {
                QVERIFY(desk_->Text(u"Label3"_qs).isEmpty() && desk_->Find(u"Command4"_qs)->isEnabled());
                desk_->Click(u"Command2"_qs);
            });
    }

    // The answer of a check waits until the window in front has closed.
    void AnswersWaitForTheWindowInFront()
    {
        desk_->server.Always("9.9.9");
        desk_->InModal(
            [&] {
                desk_->Menu("ac");
                desk_->Menu("conf");
            },
            [&] {
                QVERIFY(desk_->Until([&] { return !desk_->server.requests.isEmpty(); }));
                for (int i = 0; i < 20; ++i)
                    desk_->Advance(10);
                QCOMPARE(desk_->Told(), QStringList());
                desk_->Click(u"Command2"_qs);
            });
        desk_->Advance(10);
        QCOMPARE(desk_->Told().size(), 1);
        // An error page is no version.
        desk_->server.Always({"404.0.0 not found", 404});
        const qsizetype before = desk_->server.requests.size();
        desk_->Menu("ac");
        QVERIFY(desk_->Until([&] { return desk_->server.requests.size() > before; }));
        for (int i = 0; i < 20; ++i)
            desk_->Advance(10);
        QCOMPARE(desk_->Told(), QStringList());
    }
};

TORDILLO_TEST(TestSiteCommands)
#include "TestSiteCommands.moc"
