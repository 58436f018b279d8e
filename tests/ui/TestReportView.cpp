// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestRegistry.h"
#include "ui/ReportView.h"
#include "ui/Theme.h"

#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
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

    void TitlesAndRowsAreWorkedByKeyboard()
    {
        QWidget window;
        auto *before = new QLineEdit(&window), *after = new QLineEdit(&window);
        auto *list = new ReportView(&window);
        list->setAccessibleName(u"Lista"_qs);
        QWidget::setTabOrder(before, list);
        QWidget::setTabOrder(list, after);
        list->setModel(&model_);
        list->SetColumnTwips({0, 6000, 6000}); // wider than the window
        QStringList done;
        list->SortBy(this, [&](int column) { done << u"sort %1"_qs.arg(column); });
        list->OpenRows(this, [&](const QModelIndex &row) { done << u"open %1"_qs.arg(row.row()); });
        window.resize(300, 200);
        list->setGeometry(0, 0, 300, 150);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const auto press = [&](std::initializer_list<int> keys) {
            for (const int key : keys)
                QTest::keyClick(window.windowHandle(), Qt::Key(key));
        };
        const auto isSeen = [&](int column) {
            const int left = list->header()->sectionViewportPosition(column);
            return left < list->viewport()->width() / 2 && left + list->columnWidth(column) > 100;
        };
        before->setFocus();
        press({Qt::Key_Tab});
        QCOMPARE(window.focusWidget(), list->header());
        QCOMPARE(list->header()->accessibleName(), u"Corresponsal, título de Lista"_qs);
        press({Qt::Key_Left, Qt::Key_Space, Qt::Key_Right, Qt::Key_Right, Qt::Key_Space}); // ends at both ends
        QCOMPARE(done, (QStringList{u"sort 1"_qs, u"sort 2"_qs}));
        QCOMPARE(list->header()->accessibleName(), u"Hora, título de Lista"_qs);
        QVERIFY(isSeen(2));
        press({Qt::Key_Home, Qt::Key_Space, Qt::Key_End, Qt::Key_Space, Qt::Key_Home});
        QCOMPARE(done.mid(2), (QStringList{u"sort 1"_qs, u"sort 2"_qs}));
        QVERIFY(isSeen(1));
        const QColor plain = list->header()->grab().toImage().pixelColor(20, 1);
        press({Qt::Key_Down});
        QCOMPARE(window.focusWidget(), list);
        QVERIFY(list->header()->grab().toImage().pixelColor(20, 1) != plain); // the frame is gone
        press({Qt::Key_Down});
        QTest::keyClick(window.windowHandle(), Qt::Key_E, Qt::ControlModifier);
        QCOMPARE(done.mid(4), QStringList{u"open %1"_qs.arg(list->currentIndex().row())});
        press({Qt::Key_Tab});
        QCOMPARE(window.focusWidget(), after);

        auto *plainList = new ReportView(&window);
        plainList->setModel(&model_);
        QCOMPARE(plainList->header()->focusPolicy(), Qt::NoFocus); // nothing to do there
    }
};

TORDILLO_TEST(TestReportView)
#include "TestReportView.moc"
