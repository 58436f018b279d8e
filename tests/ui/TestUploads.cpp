// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ServiceDesk.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QAbstractItemView>
#include <QListWidget>
#include <QProgressBar>
#include <QTextBlock>
#include <QTextBrowser>

using Manner = LocalServer::Manner;

// Contacts sent to LdA and eQSL: the open log from the menu, the listed rows from the search window.
class TestUploads : public QObject {
    Q_OBJECT

    std::unique_ptr<ServiceDesk> desk_;

    void MakeDesk(int qsos)
    {
        desk_ = std::make_unique<ServiceDesk>(qsos);
        desk_->dialogs.answers = {true};
    }
    static LocalServer::Answer Confirmed(const LocalServer::Request &request)
    {
        return QByteArray("LU9ZZZ " + request.Value(u"sucall"_qs).toLatin1() + " 40m SSB 01/01/2026 0001 duplicado!Y");
    }
    QStringList Lines() const
    {
        QStringList lines;
        const auto *list = desk_->Find<QListWidget>(u"List1"_qs);
        for (int i = 0; i < list->count(); ++i)
            lines << list->item(i)->text();
        return lines;
    }
    bool Running() const { return desk_->Find(u"detener"_qs)->isEnabled(); }
    // Opens the upload from the menu, lets the run go on until `finished`, and acts.
    void InUpload(const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->Menu("suych"); },
            [&] {
                desk_->Advance(0);
                act();
                if (desk_->Front()->objectName() == u"Form13")
                    desk_->Press(Qt::Key_Escape);
            });
    }
    void InSearch(const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->Menu("eadif"); },
            [&] {
                desk_->Advance(0);
                act();
                desk_->Front()->close();
            });
    }
    QStringList Answers() const { return desk_->Find<QTextBrowser>(u"RichTextBox1"_qs)->toPlainText().split(u'\n'); }
    // The colour of a line of the answers.
    QString ColourOf(int line) const
    {
        const QTextBlock block = desk_->Find<QTextBrowser>(u"RichTextBox1"_qs)->document()->findBlockByNumber(line);
        return block.begin().fragment().charFormat().foreground().color().name();
    }

private Q_SLOTS:
    void cleanup() { desk_.reset(); }

    void ConfirmationsStandInTheLog()
    {
        MakeDesk(3);
        desk_->Start();
        desk_->server.answer = Confirmed;
        InUpload([&] {
            QVERIFY(desk_->Until([&] { return !Running(); }, 2));
            QCOMPARE(Lines().size(), 3);
            QCOMPARE(Lines().last(), u"3 LU9ZZZ>CX3A 40m/SSB >Chequeado, Confirmado!"_qs);
            QCOMPARE(desk_->Find<QListWidget>(u"List1"_qs)->currentRow(), 2);
            QCOMPARE(desk_->Text(u"estado"_qs), u"Enviados 3 de 3  ·  confirmados 3"_qs);
            QVERIFY(!desk_->Find(u"ListView1"_qs)->isVisible());
        });
        const QStringList told = desk_->Told();
        QCOMPARE(told.size(), 1);
        QVERIFY(told[0].startsWith(u"?Call: LU9ZZZ\nlog Log inicial con 3 QSO(s)\n"));
        QCOMPARE(desk_->Asked().first(), u"/lda/php/tordillo3.php"_qs);
        for (const QsoRow &row : desk_->Rows())
            QCOMPARE(row.LdA, u"2"_qs);
        // The list of the main window was read again, and there is nothing left to send.
        QCOMPARE(desk_->Find<QAbstractItemView>(u"ListView2"_qs)->model()->index(0, 15).data().toString(), u"2"_qs);
        desk_->Menu("suych");
        QCOMPARE(desk_->Told(),
            QStringList({u"!No hay estaciones argentinas que no se hayan subido a LdA en\nLog: Log inicial"_qs}));
        // The same window analyses contests.
        desk_->InModal([&] { desk_->Menu("anali"); },
            [&] {
                QVERIFY(desk_->Find(u"ListView1"_qs)->isVisible() && !desk_->Find(u"List1"_qs)->isVisible());
                desk_->Press(Qt::Key_Escape);
            });
    }

    void NoSendsNothing()
    {
        MakeDesk(1);
        desk_->dialogs.answers.clear(); // No is the preset
        desk_->Start();
        desk_->InModal([&] { desk_->Menu("suych"); }, [&] { desk_->Advance(0); });
        QCOMPARE(desk_->Told().size(), 1);
        QCOMPARE(desk_->Asked(), QStringList());
    }

    void ADeadConnectionClosesTheList()
    {
        MakeDesk(3);
        desk_->Start();
        desk_->server.answer = [](const LocalServer::Request &request) {
            return request.Value(u"sucall"_qs) == u"CX1A" ? Confirmed(request) : LocalServer::Answer(Manner::Silent);
        };
        desk_->InModal([&] { desk_->Menu("suych"); },
            [&] {
                desk_->Advance(0);
                QVERIFY(desk_->Until([&] { return desk_->server.requests.size() == 2; }, 2));
                desk_->Told();
                desk_->Advance(15000);
            });
        QCOMPARE(desk_->Told(),
            QStringList({u"!No parace haber conexión con internet!"_qs,
                u"iEn el log quedó el nuevo estado de 1 QSOs.\nQuedaron sin enviar 1 de 3 QSOs.\n1 QSO fue enviado y quedó sin respuesta: sigue como estaba."_qs}));
        QStringList states;
        for (const QsoRow &row : desk_->Rows())
            states << row.LdA;
        QCOMPARE(states.join(u' '), u"2 1 1"_qs);
    }

    void EscEndsTheRunInOrder()
    {
        MakeDesk(3);
        desk_->Start();
        desk_->server.Always(Manner::Silent);
        InUpload([&] {
            desk_->Told();
            desk_->Press(Qt::Key_Escape);
            QVERIFY(desk_->Front()->isVisible() && !Running());
            QCOMPARE(desk_->Told(),
                QStringList({u"!Subida a LdA abortada!"_qs,
                    u"iEn el log quedó el nuevo estado de 0 QSOs.\nQuedaron sin enviar 2 de 3 QSOs.\n1 QSO fue enviado y quedó sin respuesta: sigue como estaba."_qs}));
        });
        // So does closing the window.
        desk_->dialogs.answers = {true};
        desk_->InModal([&] { desk_->Menu("suych"); },
            [&] {
                desk_->Advance(0);
                desk_->Front()->close();
            });
        QCOMPARE(desk_->Told().value(1), u"!Subida a LdA abortada!"_qs);
    }

    void AMissingAccountOpensTheSettings()
    {
        MakeDesk(1);
        const std::pair<QString, QString> rows[] = {{u"PassLdA_="_qs, u"!Falta configurar la contraseña de LdA!"_qs},
            {u"UserLdA_="_qs, u"!Falta configurar el usuario de LdA!"_qs}};
        for (const auto &[key, told] : rows) {
            desk_->Configure(key, {});
            desk_->Start();
            desk_->InModal([&] { desk_->Menu("suych"); },
                [&] {
                    QCOMPARE(desk_->Front()->objectName(), u"Form2"_qs);
                    desk_->Click(u"Command2"_qs);
                });
            QCOMPARE(desk_->Told(), QStringList({told}));
        }
    }

    void ListedRowsGoToLda()
    {
        MakeDesk(3);
        desk_->Start();
        desk_->server.InTurn({"<p>CX3A OK!</p>", "CX2A duplicado!", "CX1A OK!"});
        InSearch([&] {
            desk_->Click(u"Command6"_qs);
            QCOMPARE(desk_->Text(u"Frame5"_qs), u"Respuesta de Log de Argentina ..."_qs);
            QVERIFY(!desk_->Find(u"Command7"_qs)->isEnabled() && !desk_->Find(u"Command8"_qs)->isEnabled());
            QVERIFY(desk_->Until([&] { return !Running(); }));
            QCOMPARE(desk_->Focus(), u"Command6"_qs);
            const QString line(28, u'-');
            QCOMPARE(Answers(),
                QStringList({u"Conectando con LdA ..."_qs, u"CX3A OK!"_qs, u"CX2A duplicado!"_qs, u"CX1A OK!"_qs, line,
                    u"QSOs   Cargados: 2"_qs, u"QSOs Duplicados: 1"_qs, u"Desconectado de LdA."_qs, line, QString()}));
            QCOMPARE((QStringList{ColourOf(1), ColourOf(2), ColourOf(4)}),
                QStringList({u"#004000"_qs, u"#ff0000"_qs, u"#0000c0"_qs}));
            QCOMPARE(desk_->Find<QProgressBar>(u"ProgressBar1"_qs)->value(), 3);
            desk_->Click(u"Command7"_qs);
            QVERIFY(!desk_->Find(u"Frame5"_qs)->isVisible() && desk_->Find(u"Command8"_qs)->isEnabled());
        });
        QCOMPARE(desk_->Told(), QStringList({u"?Desea usar el campo COMMENT como QSLMSG?"_qs}));
        const LocalServer::Request first = desk_->server.requests.first();
        QCOMPARE(first.Path(), u"/lda_segura_2/php/tordillo2Compact.php"_qs);
        QCOMPARE(first.Value(u"sucall"_qs) + first.Value(u"pass"_qs), u"CX3A"_qs + ServiceDesk::password);
        QCOMPARE(desk_->Rows().first().LdA, u"1"_qs);
    }

    void ThreeErrorsEndAnUpload()
    {
        MakeDesk(5);
        desk_->Start();
        desk_->server.Always("Error: no es una QSL");
        InSearch([&] {
            desk_->Click(u"Command8"_qs);
            QVERIFY(desk_->Until([&] { return !Running(); }));
            QVERIFY(Answers()[2].endsWith(u" ..."));
            QVERIFY(!Answers().join(u' ').contains(u"a%26b") && Answers().contains(u"Desconectado de eQSL."));
        });
        QCOMPARE(desk_->Told().mid(1),
            QStringList({u"!Se prdujeron 3 Errores en la subida a eQSL \nreviste los parámetros"_qs,
                u"iCargados: 0, duplicados: 0.\nQuedaron sin enviar 2 de 5 QSOs."_qs}));
    }

    void ManyRowsAreAskedTwice()
    {
        MakeDesk(51);
        desk_->dialogs.answers.clear(); // Cancelar is the preset
        desk_->Start();
        InSearch([&] { desk_->Click(u"Command6"_qs); });
        QCOMPARE(desk_->Told(),
            QStringList({u"?Más de 50 QSOs para subir!\npuede que domore mucho tiempo, prosigue o Cancela?\n\n"
                         "SUGERENCIA: Filre por fecha para subilos en etapas"_qs}));
        QCOMPARE(desk_->Asked(), QStringList());
    }

    void ClosingTheSearchEndsAnUpload()
    {
        MakeDesk(2);
        desk_->Start();
        desk_->server.Always(Manner::Silent);
        InSearch([&] {
            desk_->Click(u"Command6"_qs);
            QVERIFY(desk_->Until([&] { return desk_->server.requests.size() == 1; }));
        });
        QCOMPARE(desk_->Told().last(),
            u"iCargados: 0, duplicados: 0.\nQuedaron sin enviar 1 de 2 QSOs.\n1 QSOs no tuvieron respuesta."_qs);
        InSearch([&] { QVERIFY(desk_->Find(u"Command6"_qs)->isEnabled()); });
    }
};

TORDILLO_TEST(TestUploads)
#include "TestUploads.moc"
