// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Contrast.h"
#include "support/TestRegistry.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QToolTip>

namespace {

using Pair = std::pair<QPalette::ColorRole, QPalette::ColorRole>;
using P = QPalette;
const QList<Pair> fieldPairs{{P::Text, P::Base}, {P::Text, P::AlternateBase}, {P::PlaceholderText, P::Base},
    {P::ButtonText, P::Button}, {P::HighlightedText, P::Highlight}, {P::Link, P::Base}, {P::LinkVisited, P::Base},
    {P::BrightText, P::Base}};
const QList<Pair> rowPairs{{P::Text, P::Base}, {P::Text, P::AlternateBase}, {P::HighlightedText, P::Highlight}};
const QList<Pair> windowPairs = fieldPairs
    + QList<Pair>{{P::WindowText, P::Window}, {P::ToolTipText, P::ToolTipBase}, {P::Link, P::Window},
        {P::LinkVisited, P::Window}};

} // namespace

class TestTheme : public QObject {
    Q_OBJECT

    void CheckContrast(const QPalette &palette, const QList<Pair> &pairs, QPalette::ColorGroup group, double least)
    {
        for (const auto &[text, ground] : pairs) {
            const double contrast = Contrast(palette.color(group, text), palette.color(group, ground));
            QVERIFY2(contrast >= least,
                qPrintable(
                    QStringLiteral("group %1, roles %2 on %3: %4").arg(group).arg(text).arg(ground).arg(contrast)));
        }
    }

private Q_SLOTS:
    void initTestCase() { SetUpLook(*qApp); }
    void cleanup() { ApplyWindowTheme(Theme::Light); }

    void EveryTextReadsOnItsGround()
    {
        for (const bool dark : {false, true}) {
            ApplyWindowTheme(dark ? Theme::Dark : Theme::Light);
            QWidget window;
            auto *label = new QLabel(&window);
            auto *field = new QLineEdit(&window);
            MarkAccent(label);
            QCOMPARE(ListRowPalette(CurrentTheme()).color(QPalette::Text), QColor(0x004000));
            for (const auto group : {QPalette::Active, QPalette::Inactive}) {
                CheckContrast(window.palette(), windowPairs, group, 4.5);
                CheckContrast(ListRowPalette(CurrentTheme()), rowPairs, group, 4.5);
                QVERIFY(Contrast(label->palette().color(group, QPalette::WindowText),
                            window.palette().color(QPalette::Window))
                    >= 4.5);
            }
            CheckContrast(window.palette(), windowPairs, QPalette::Disabled, 3);
            CheckContrast(QToolTip::palette(), windowPairs, QPalette::Inactive, 4.5);
            SetFieldFocused(field, true);
            CheckContrast(field->palette(), fieldPairs, QPalette::Active, 4.5);
            QCOMPARE(field->palette().color(QPalette::Base), QColor(0xC0C0FF));
            QCOMPARE(field->palette().color(QPalette::Text), QColor(Qt::black));
            SetFieldFocused(field, false);
            QCOMPARE(field->palette().color(QPalette::Base), window.palette().color(QPalette::Base));
        }
    }

    void AChangeReachesOpenWindows()
    {
        QWidget window;
        auto *accent = new QLabel(&window), *plain = new QLabel(&window);
        auto *field = new QLineEdit(&window);
        MarkAccent(accent);
        SetFieldFocused(field, true);
        window.show();
        QCOMPARE(accent->palette().color(QPalette::WindowText), QColor(0x0000FF));
        QCOMPARE(plain->palette().color(QPalette::WindowText), QColor(Qt::black));
        ApplyWindowTheme(Theme::Dark);
        QCOMPARE(CurrentTheme(), Theme::Dark);
        QCoreApplication::processEvents();
        QCOMPARE(window.palette().color(QPalette::Window), QColor(0x404040));
        QCOMPARE(accent->palette().color(QPalette::WindowText), QColor(0x80FFFF));
        QCOMPARE(accent->palette().color(QPalette::Window), QColor(0x404040));
        QCOMPARE(plain->palette().color(QPalette::WindowText), QColor(0xC0C0C0));
        QCOMPARE(field->palette().color(QPalette::Base), QColor(0xC0C0FF));
        SetFieldFocused(field, false);
        QCOMPARE(field->palette().color(QPalette::Base), ThemePalette(Theme::Dark).color(QPalette::Base));
    }
};

TORDILLO_TEST(TestTheme)
#include "TestTheme.moc"
