// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestRegistry.h"
#include "ui/WindowScaler.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTreeWidget>
#include <QWidget>

class TestWindowScaler : public QObject {
    Q_OBJECT

    std::unique_ptr<QWidget> window_;
    QLabel *title_ = nullptr;
    QLineEdit *call_ = nullptr;
    QTreeWidget *list_ = nullptr;

    bool NothingIsClipped() const
    {
        for (QWidget *widget : window_->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            const QSize least = widget->minimumSizeHint().boundedTo(widget->maximumSize());
            if (widget->width() < least.width() || widget->height() < least.height()
                || !window_->rect().contains(widget->geometry()))
                return false;
        }
        return true;
    }

    void Resize(int width, int height)
    {
        window_->resize(width, height);
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }

private Q_SLOTS:
    void init()
    {
        window_ = std::make_unique<QWidget>();
        auto *grid = new QGridLayout(window_.get());
        grid->addWidget(title_ = new QLabel(u"LU9ZZZ"_qs), 0, 0);
        grid->addWidget(call_ = new QLineEdit, 0, 1);
        grid->addWidget(list_ = new QTreeWidget, 1, 0, 1, 2);
        QFont large = title_->font();
        large.setPointSizeF(20);
        title_->setFont(large);
        QFont own = window_->font();
        own.setPointSizeF(10);
        window_->setFont(own);
        call_->setFixedWidth(100);
        list_->setHeaderLabels({u"Indice"_qs, u"Estación"_qs, u"Banda"_qs});
        list_->setColumnWidth(0, 0);
        list_->header()->setMinimumSectionSize(0);
        list_->setColumnWidth(0, 0);
        list_->setColumnWidth(1, 67);
        window_->resize(1300, 700);
        window_->move(20, 10);
        CaptureLayout(window_.get());
    }

    void TheWindowFollowsTheScreen()
    {
        // The screen, whether the form is kept, the size and the scale; below the least scale the window stays larger.
        const std::tuple<QSize, bool, QSize, double> cases[] = {{{2560, 1440}, true, {2436, 1312}, 1.874},
            {{2732, 768}, false, {2600, 700}, 1.0}, {{7680, 4320}, true, {7309, 3936}, 3.0},
            {{800, 600}, true, QSize(0, 0), 0.8}};
        for (const auto &[screen, keep, size, scale] : cases) {
            init();
            FitToScreen(window_.get(), screen, keep);
            window_->show();
            QCoreApplication::processEvents();
            if (!size.isNull())
                QCOMPARE(window_->size(), size);
            const double found = ScaleOf(window_.get());
            QVERIFY2(std::abs(found - scale) < 0.005, qPrintable(QString::number(found)));
            QVERIFY(std::abs(call_->font().pointSizeF() - 10 * scale) < 0.05);
            QVERIFY(std::abs(title_->font().pointSizeF() - 20 * scale) < 0.1);
            QCOMPARE(call_->width(), qRound(100 * found));
            QCOMPARE(list_->columnWidth(1), qRound(67 * found));
            QCOMPARE(list_->columnWidth(0), 0);
            QVERIFY(NothingIsClipped());
        }
    }

    void ResizingThereAndBackLeavesNoTrace()
    {
        window_->show();
        for (int width = 1300; width <= 2600; width += 7)
            window_->resize(width, 700 * width / 1300);
        Resize(2600, 1400);
        QCOMPARE(window_->size(), QSize(2600, 1400)); // the scaled content does not push the window further
        QVERIFY(std::abs(call_->font().pointSizeF() - 20) < 0.1);
        for (int width = 2600; width >= 1300; width -= 50)
            window_->resize(width, 700 * width / 1300);
        Resize(1300, 700);
        QCOMPARE(window_->size(), QSize(1300, 700));
        QVERIFY(std::abs(call_->font().pointSizeF() - 10) < 0.05);
        QCOMPARE(call_->width(), 100);
        QCOMPARE(list_->columnWidth(1), 67);
    }

    // A window at rest costs nothing: each layout asked for by the scaling would ask for the next.
    void AWindowAtRestStaysAtRest()
    {
        auto *grid = static_cast<QGridLayout *>(window_->layout());
        grid->setHorizontalSpacing(9);
        auto *row = new QHBoxLayout;
        row->setSpacing(7);
        row->addWidget(new QLabel(u"QTR"_qs));
        grid->addLayout(row, 2, 0);
        window_->show();
        Resize(1400, 760);
        class : public QObject {
        public:
            int layouts = 0;
            bool eventFilter(QObject *, QEvent *event) override
            {
                layouts += event->type() == QEvent::LayoutRequest;
                return false;
            }
        } watch;
        window_->installEventFilter(&watch);
        Resize(1400, 760);
        QCOMPARE(watch.layouts, 0);
    }

    // Told bold or slanted and no size: the size is the window's, in a control that comes later too.
    void WhatIsOnlyBoldKeepsTheSizeOfItsNeighbour()
    {
        const auto addBold = [this](int row) {
            auto *label = new QLabel(u"QTR"_qs);
            QFont bold;
            bold.setBold(true);
            label->setFont(bold);
            static_cast<QGridLayout *>(window_->layout())->addWidget(label, row, 0);
            label->show();
            return label;
        };
        const QLabel *early = addBold(2);
        CaptureLayout(window_.get());
        FitToScreen(window_.get(), {2049, 1152}, true);
        window_->show();
        Resize(1950, 1050);
        const QLabel *late = addBold(3);
        const QSize sizes[] = {{1950, 1050}, {2600, 1400}, {1300, 700}};
        for (const QSize &size : sizes) {
            Resize(size.width(), size.height());
            const double scale = ScaleOf(window_.get());
            QVERIFY(std::abs(scale - size.width() / 1300.0) < 0.01);
            for (const QWidget *widget : {static_cast<const QWidget *>(call_), static_cast<const QWidget *>(early),
                     static_cast<const QWidget *>(late)})
                QVERIFY(std::abs(widget->font().pointSizeF() - 10 * scale) < 0.05);
            QVERIFY(early->font().bold() && late->font().bold());
            QVERIFY(std::abs(title_->font().pointSizeF() - 20 * scale) < 0.1);
        }
    }

    void ADialogDoesNotTakeTheSizeOfItsOwner()
    {
        window_->show();
        Resize(1950, 1050);
        QWidget dialog(window_.get(), Qt::Dialog);
        auto *row = new QHBoxLayout(&dialog);
        std::array<QLabel *, 3> labels{};
        for (QLabel *&label : labels)
            row->addWidget(label = new QLabel(u"QTR"_qs));
        QFont bold;
        bold.setBold(true);
        labels[1]->setFont(bold);
        QFont told = labels[0]->font();
        told.setPointSizeF(told.pointSizeF()); // the same, but its own
        labels[2]->setFont(told);
        const double size = told.pointSizeF();
        dialog.resize(400, 200);
        CaptureLayout(&dialog);
        for (const double scale : {2.0, 1.5, 1.0, 3.0}) {
            FitToScreen(&dialog, QSize(1366, 768) * scale / ScaleOf(&dialog), true);
            QVERIFY(std::abs(ScaleOf(&dialog) - scale) < 0.05);
            for (const QLabel *label : labels)
                QVERIFY(std::abs(label->font().pointSizeF() - size * ScaleOf(&dialog)) < 0.05);
        }
    }

    void ContentThatNeedsMoreRoomIsScaledLess()
    {
        window_->show();
        Resize(1300, 700);
        title_->setText(QString(60, u'W'));
        Resize(1300, 700);
        const double needed = ScaleOf(window_.get());
        QVERIFY(needed < 1 && needed >= 0.8);
        QVERIFY(NothingIsClipped());
        title_->setText(QString(200, u'W'));
        Resize(1300, 700);
        QVERIFY(window_->width() > 1300);
        QVERIFY(NothingIsClipped());
    }
};

TORDILLO_TEST(TestWindowScaler)
#include "TestWindowScaler.moc"
