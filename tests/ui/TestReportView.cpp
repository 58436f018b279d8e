// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestRegistry.h"
#include "ui/ReportView.h"
#include "ui/Theme.h"

#include <QHeaderView>
#include <QImage>
#include <QStandardItemModel>
#include <QTest>
#include <QWindow>

class TestReportView : public QObject {
    Q_OBJECT

    QStandardItemModel model_;
    std::unique_ptr<ReportView> list_;

    QList<int> Widths() const { return {list_->columnWidth(0), list_->columnWidth(1), list_->columnWidth(2)}; }
    void Resize(int width)
    {
        list_->resize(width, 300);
        QCoreApplication::processEvents();
    }
    // The ground of a row and of the room below the rows, away from any text.
    QColor GroundAt(int y) const { return list_->viewport()->grab().toImage().pixelColor(150, y); }
    QColor GroundOf(int row) const { return GroundAt(list_->visualRect(model_.index(row, 1)).bottom() - 1); }

private Q_SLOTS:
    void initTestCase() { SetUpLook(*qApp); }
    void init()
    {
        model_.clear();
        model_.setHorizontalHeaderLabels({u"Indice"_qs, u"Corresponsal"_qs, u"Hora"_qs});
        for (const char16_t *call : {u"LU1ABC", u"CX2ZZ"})
            model_.appendRow({new QStandardItem, new QStandardItem(QString::fromUtf16(call)), new QStandardItem});
        list_ = std::make_unique<ReportView>();
        list_->setModel(&model_);
        list_->SetColumnTwips({0, 3000, 1500});
        list_->setFocusPolicy(Qt::NoFocus); // no mark on the first row
        list_->show();
    }
    void cleanup()
    {
        list_.reset();
        ApplyWindowTheme(Theme::Light);
    }

    void RowsAreLitOnADarkGround()
    {
        Resize(400);
        for (const Theme theme : {Theme::Light, Theme::Dark}) {
            ApplyWindowTheme(theme);
            QCoreApplication::processEvents();
            const QPalette rows = ListRowPalette(theme);
            QCOMPARE(GroundOf(model_.rowCount() - 1), rows.color(QPalette::Base));
            QCOMPARE(GroundOf(model_.rowCount() - 2), rows.color(QPalette::AlternateBase));
            QCOMPARE(GroundAt(list_->viewport()->height() - 3), ThemePalette(theme).color(QPalette::Base));
            model_.insertRow(0, new QStandardItem); // the others keep their ground
            QCoreApplication::processEvents();
            QCOMPARE(GroundOf(model_.rowCount() - 1), rows.color(QPalette::Base));
        }
    }

    void ColumnsShareTheRoomUntilOneIsDragged()
    {
        Resize(100); // too narrow: as told, and the rest by scrolling
        QCOMPARE(Widths(), (QList<int>{0, 200, 100}));
        Resize(601);
        const int room = list_->viewport()->width();
        QCOMPARE(list_->header()->length(), room);
        QVERIFY(qAbs(list_->columnWidth(1) - 2 * list_->columnWidth(2)) <= 2);
        Resize(200);
        QCOMPARE(Widths(), (QList<int>{0, 200, 100}));
        Resize(601);

        const QPoint edge = list_->header()->viewport()->mapTo(list_.get(), QPoint(list_->columnWidth(1), 5));
        QWindow *window = list_->windowHandle();
        QTest::mousePress(window, Qt::LeftButton, {}, edge);
        QTest::mouseMove(window, edge - QPoint(40, 0));
        QTest::mouseRelease(window, Qt::LeftButton, {}, edge - QPoint(40, 0));
        const QList<int> dragged = Widths();
        QVERIFY(dragged[1] < room * 2 / 3 - 20);
        Resize(800);
        QCOMPARE(Widths(), dragged);
    }
};

TORDILLO_TEST(TestReportView)
#include "TestReportView.moc"
