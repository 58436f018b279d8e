// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ServiceDesk.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"
#include "ui/WindowScaler.h"

#include <QLabel>
#include <QPushButton>

using Manner = LocalServer::Manner;

// A call looked up in QRZ and LdA, from the entry and from the edit window.
class TestLookups : public QObject {
    Q_OBJECT

    std::unique_ptr<ServiceDesk> desk_;

    void Start(const QString &call)
    {
        desk_->Start();
        desk_->Fill(u"Corresponsal"_qs, call);
    }
    QString Activity() const
    {
        auto *label = desk_->Main().findChild<QLabel *>(u"Label20"_qs);
        return label->isVisible() ? label->text() : QString();
    }
    // What the window says: title, height at scale 1, text, the enabled buttons that are shown.
    QString Shown() const
    {
        const QWidget *front = desk_->Front();
        QString shown = front->objectName() + u'|' + front->windowTitle() + u' '
            + QString::number(qRound(front->height() / ScaleOf(front))) + u'|'
            + desk_->Find(u"Text1"_qs)->property("plainText").toString().replace(u"\n"_qs, u";"_qs) + u'|';
        for (const QString &button : {u"Command1"_qs, u"Command2"_qs, u"Command4"_qs})
            if (desk_->Find(button)->isVisible() && desk_->Find(button)->isEnabled())
                shown += desk_->Find<QPushButton>(button)->text() + u';';
        return shown;
    }
    // Begins a search and acts in the window that brings its answer.
    void InResult(const std::function<void()> &begin, const std::function<void()> &act)
    {
        bool acted = false;
        desk_->InModal(
            [&] {
                begin();
                desk_->Until([&] { return acted; }, 100);
            },
            [&] {
                act();
                desk_->Press(Qt::Key_Escape);
                acted = true;
            });
        QVERIFY(QTest::qWaitFor([&] { return desk_->Front()->isActiveWindow(); }));
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<ServiceDesk>(1); }
    void cleanup() { desk_.reset(); }

    void FromFourCharactersOnByKey()
    {
        desk_->server.Always(Manner::Silent);
        Start(u"LU1"_qs);
        desk_->Press(Qt::Key_Q, Qt::ControlModifier);
        desk_->Press(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(Activity(), QString());
        desk_->Type(u"A"_qs);
        desk_->Press(Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(Activity(), u"Conectando a QRZ ..."_qs);
        desk_->Press(Qt::Key_L, Qt::ControlModifier);
        QCOMPARE(Activity(), u"Buscando a LU1A en LdA ..."_qs);
        desk_->Advance(20000); // no answer: it goes on standing there
        QCOMPARE(Activity(), u"Buscando a LU1A en LdA ..."_qs);
        desk_->Press(Qt::Key_Escape);
        QCOMPARE(Activity(), QString());
        QCOMPARE(desk_->Text(u"Corresponsal"_qs), u"LU1A"_qs);
        QCOMPARE(desk_->Told(), QStringList());
    }

    void QrzFromTheEntry()
    {
        desk_->server.InTurn({"<Key>k1</Key>", "<call>lu1abc</call><grid>GF05AB</grid>"});
        Start(u"LU1ABC"_qs);
        InResult([&] { desk_->Click(u"Command13"_qs); },
            [&] {
                QCOMPARE(Activity(), QString());
                QCOMPARE(Shown(), u"Form33|QRZ 394|LU1ABC;Grid Locator: GF05AB;|"_qs);
            });
        QCOMPARE(desk_->server.requests.first().Value(u"password"_qs), ServiceDesk::password);
        QCOMPARE(desk_->Asked(), QStringList({u"/qrz/xml/"_qs, u"/qrz/xml/current/"_qs}));
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        QVERIFY(desk_->Main().findChild<QLabel *>(u"Text4"_qs)->text().contains(u"<grid>"));
    }

    void LdaFromTheEntryFillsFields()
    {
        desk_->server.Always(
            "<?xml ?><call>lu1abc</call><name>Juan &amp; Ana</name><email>j@x</email><grid>FF78SK</grid>");
        Start(u"LU1ABC"_qs);
        InResult([&] { desk_->Press(Qt::Key_L, Qt::ControlModifier); },
            [&] {
                QCOMPARE(Shown(),
                    u"Form33|Log de Argentina 533|LU1ABC;Juan & Ana;Grid Locator: FF78SK;j@x;|Nombre;eMail;Grilla;"_qs);
                desk_->Click(u"Command1"_qs);
                desk_->Click(u"Command4"_qs);
                QVERIFY(Shown().endsWith(u"|eMail;"));
            });
        QCOMPARE(desk_->Text(u"Obs"_qs) + u'|' + desk_->Text(u"Text2"_qs), u"Juan & Ana|FF78SK"_qs);
        // A first run has no server in its configuration yet.
        desk_->OpenLogbook().configuration.LDAQ_web.clear();
        InResult([&] { desk_->Press(Qt::Key_L, Qt::ControlModifier); }, [] {});
        const QString path = u"/lda_predeterminada/php/tordillo_lda.php"_qs;
        QCOMPARE(desk_->Asked(), QStringList({path, path}));
        // The next showing has its buttons again, and empty labels for an unknown call.
        desk_->server.Always("<?xml ?>");
        InResult([&] { desk_->Click(u"Command14"_qs); },
            [&] {
                QCOMPARE(Shown(), u"Form33|Log de Argentina 533|LU1ABC No está en Lda!|Nombre;eMail;Grilla;"_qs);
                desk_->Click(u"Command2"_qs);
            });
        QCOMPARE(desk_->Text(u"Obs"_qs), QString());
    }

    void FromTheEditWindow()
    {
        desk_->server.answer = [](const LocalServer::Request &request) -> LocalServer::Answer {
            return request.Path().endsWith(u"xml/") ? "<Key>k</Key>" : "<?xml ?><call>cx1a</call>";
        };
        desk_->Start();
        const std::pair<QString, QString> buttons[] = {
            {u"Command13"_qs, u"Form33|QRZ 394|CX1A;|"_qs}, {u"Command3"_qs, u"Form33|Log de Argentina 386|CX1A;|"_qs}};
        desk_->InModal([&] { desk_->DoubleClick(u"ListView2"_qs, 0); },
            [&] {
                for (const auto &[button, shown] : buttons) {
                    InResult(
                        [&, name = button] { desk_->Click(name); }, [&, text = shown] { QCOMPARE(Shown(), text); });
                    QCOMPARE(desk_->Front()->objectName(), u"Form5"_qs);
                }
                desk_->Front()->close();
            });
        QCOMPARE(desk_->Asked(),
            QStringList({u"/qrz_plano/xml/"_qs, u"/qrz_plano/xml/current/"_qs, u"/lda/php/tordillo_lda.php"_qs}));
    }

    void AnAnswerWaitsForTheWindowInFront()
    {
        desk_->server.Always("<?xml ?><call>lu1abc</call>");
        Start(u"LU1ABC"_qs);
        desk_->Press(Qt::Key_L, Qt::ControlModifier);
        desk_->InModal([&] { desk_->Menu("conf"); },
            [&] {
                QVERIFY(desk_->Until([&] { return Activity().isEmpty(); }, 100));
                QCOMPARE(desk_->Front()->objectName(), u"Form2"_qs);
                InResult([&] { desk_->Click(u"Command2"_qs); }, [&] { QVERIFY(Shown().contains(u"LU1ABC")); });
            });
        QCOMPARE(desk_->Front()->objectName(), u"Form1"_qs);
    }

    void WhatGoesWrongIsTold()
    {
        Start(u"LU1ABC"_qs);
        const std::pair<LocalServer::Answer, QString> rows[] = {
            {"<Error>Username/password incorrect</Error>", u"XQRZ dice:\nUsername/password incorrect"_qs},
            {"<html>", u"!No parece haber conexión de internet!"_qs},
            {Manner::Hangup, u"!No parece haber conexión de internet!"_qs}};
        for (const auto &[answer, told] : rows) {
            desk_->server.Always(answer);
            desk_->Click(u"Command13"_qs);
            QCOMPARE(desk_->NextTold(), QStringList({told}));
            QCOMPARE(Activity(), QString());
        }
        desk_->server.Always("<Session></Session>");
        desk_->Main().findChild<QPushButton *>(u"Command12"_qs)->click();
        QCOMPARE(desk_->NextTold(), QStringList({u"!No parece haber conexión de internet!"_qs}));
        QCOMPARE(desk_->server.requests.last().target, "/hamqth/xml.php?u=tordillo&p=48273615");
        QCOMPARE(desk_->Main().findChild<QLabel *>(u"Text4"_qs)->text(), u"\nvacío!"_qs);
        // Nobody signed this certificate.
        const LocalServer secure(LocalServer::Scheme::Https);
        desk_->PointTo(secure.Base());
        desk_->Click(u"Command13"_qs);
        const QStringList told = desk_->NextTold();
        QCOMPARE(told.first(), u"!No parece haber conexión de internet!"_qs);
        QVERIFY2(told.last().contains(u"certificado"), qPrintable(told.last()));
        QVERIFY(secure.requests.isEmpty());
    }

    void WithoutAnAccountNothingIsAsked()
    {
        desk_->Configure(u"HAMQuser="_qs, {});
        Start(u"LU1ABC"_qs);
        desk_->Click(u"Command13"_qs);
        QCOMPARE(desk_->Told(), QStringList({u"!Sin configurar Usuario o Contraseña!"_qs}));
        QCOMPARE(Activity(), QString());
    }
};

TORDILLO_TEST(TestLookups)
#include "TestLookups.moc"
