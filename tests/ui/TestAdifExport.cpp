// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"

#include <QHeaderView>
#include <QTest>
#include <QTreeView>

// What the search window shows, written as ADIF.
class TestAdifExport : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;
    QWidget *form_ = nullptr;

    void InSearch(const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->Menu("eadif"); },
            [&] {
                form_ = desk_->Front();
                desk_->Advance(0);
                act();
                if (form_->isVisible())
                    form_->close();
            });
    }
    QString Path() const { return desk_->Path(u"salida.adi"_qs); }
    // The file's records, each from its call on.
    QList<QByteArray> Records() const
    {
        QList<QByteArray> records;
        for (const QByteArray &line : desk_->Content(u"salida.adi"_qs).split('\n'))
            if (line.contains("<EOR>"))
                records << line.mid(line.indexOf("<CALL:")).trimmed();
        return records;
    }
    void Export(bool remarksAsMessage = false)
    {
        desk_->dialogs.answers.prepend(remarksAsMessage);
        desk_->dialogs.files << Path();
        desk_->Click(u"Command1"_qs);
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup() { desk_.reset(); }

    void TheRowsInTheirOrder()
    {
        desk_->Furnish(4);
        desk_->Start();
        InSearch([&] {
            QTreeView *list = desk_->Find<QTreeView>(u"ListView2"_qs);
            desk_->Put(u"Text7"_qs, u"40m"_qs);
            desk_->Press(Qt::Key_Return);
            const auto clickTitle = [&](int column) {
                QTest::mouseClick(list->header()->viewport(), Qt::LeftButton, {},
                    QPoint(list->header()->sectionViewportPosition(column) + 8, list->header()->height() / 2));
            };
            clickTitle(2);
            Export();
            const QList<RecordingDialogs::Shown> shown = desk_->dialogs.shown;
            QCOMPARE(desk_->Told(),
                (QStringList{u"?Desea usar el campo COMMENT como QSLMSG?"_qs, u"-Exportar a ADIF ..."_qs,
                    u'!' + Path() + u"\nGuardado!\n\nDesea verlo?"}));
            QVERIFY(shown[0].preset == Dialogs::Button::Yes && shown[2].preset == Dialogs::Button::No);
            QCOMPARE(shown[1].detail.section(u'|', 0, 0), u"ADIF (*.adi)"_qs);
            QVERIFY(!form_->isVisible());
        });
        QStringList calls;
        for (const QByteArray &record : Records())
            calls << QString::fromLatin1(record.mid(8, 4));
        QCOMPARE(calls.join(u' '), u"CX1A CX2A CX4A"_qs);
        const QByteArray content = desk_->Content(u"salida.adi"_qs);
        QVERIFY(content.startsWith("<PROGRAMID:17>Tordillo Compacto\r\n") && content.endsWith("<EOR>\r\n<EOF>\r\n"));
    }

    void RemarksAsMessage()
    {
        desk_->Furnish();
        QsoRow row = Desk::SampleQso(1);
        row.Obs = u"TNX ñ"_qs;
        row.Frecuencia = u"7,090"_qs; // of an old file
        row.Nombre_Sat = u" AO-7 "_qs;
        desk_->Store({row});
        desk_->Start();
        InSearch([&] { Export(true); });
        QCOMPARE(Records().first().mid(12),
            QByteArray("<MODE:3>SSB<BAND:3>40m<FREQ:5>7.090<QSO_DATE:8>20260101<TIME_ON:4>0001<RST_SENT:2>59"
                       "<RST_RCVD:2>59<PROP_MODE:3>SAT<SAT_NAME:4>AO-7<BAND_RX:2>2m<OPERATOR:6>LU1AAA"
                       "<COMMENT:5>TNX \xF1")
                + "<QSLMSG:5>TNX \xF1<EOR>");
    }

    void ContactsThatWentMeanwhileAreLeftOut()
    {
        desk_->Furnish(3);
        desk_->Start();
        InSearch([&] {
            QVERIFY(RawDatabase(desk_->Path(u"base0.mdb"_qs)).Run("DELETE FROM Tabla1 WHERE Estacion='CX2A'"));
            Export();
        });
        QCOMPARE(Records().size(), 2);
    }
};

TORDILLO_TEST(TestAdifExport)
#include "TestAdifExport.moc"
