// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ContestDesk.h"
#include "ControlLook.h"
#include "support/Contrast.h"
#include "support/TestRegistry.h"
#include "ui/AnswerColours.h"
#include "ui/Form10_About.h"
#include "ui/Form11_Satellites.h"
#include "ui/Form12_AdifImport.h"
#include "ui/Form13_Analysis.h"
#include "ui/Form14_Provinces.h"
#include "ui/Form15_Backup.h"
#include "ui/Form16_Profiles.h"
#include "ui/Form17_CallQsos.h"
#include "ui/Form18_Closing.h"
#include "ui/Form19_CabrilloText.h"
#include "ui/Form20_Macros.h"
#include "ui/Form21_PhoneImportHelp.h"
#include "ui/Form22_Keyboard.h"
#include "ui/Form2_Settings.h"
#include "ui/Form33_LookupResult.h"
#include "ui/Form3_OpenLog.h"
#include "ui/Form5_EditQso.h"
#include "ui/Form6_Search.h"
#include "ui/Form7_EditContestQso.h"
#include "ui/Form8_ContestLogs.h"
#include "ui/Form9_CabrilloHeader.h"
#include "ui/KeyerTest.h"
#include "ui/LookStyle.h"
#include "ui/Manual.h"
#include "ui/ReportView.h"
#include "ui/SatellitePanel.h"
#include "ui/TextWindow.h"
#include "ui/Theme.h"
#include "ui/WindowScaler.h"
#include "ui/Windows.h"

#include <QAccessible>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTreeView>

using namespace ControlLook;

namespace {

constexpr double leastContrast = 4.5;
// The red of differences and of answers is pure red, as operators know it. It reads with 4.0 on white, and no light
// ground is better; the dark theme has a lighter red of its own.
constexpr double leastOfRed = 3.5;

QString Sign(const QWidget *widget)
{
    return QString::fromLatin1(widget->metaObject()->className()) + u' ' + widget->objectName();
}

QRect Place(const QWidget *widget) { return {widget->mapTo(widget->window(), QPoint()), widget->size()}; }

// Where a walk that has reached `from` must not go next: back to the left in the same row, or up without going right.
bool GoesBack(const QRect &from, const QRect &to)
{
    const int common = std::min(from.bottom(), to.bottom()) - std::max(from.top(), to.top());
    if (common > std::min(from.height(), to.height()) / 2)
        return to.right() < from.left();
    return to.bottom() <= from.top() + from.height() / 2 && to.left() < from.right();
}

} // namespace

// All windows: by keyboard alone, with a screen reader, in both themes, on small and large screens.
class TestAccessibility : public QObject {
    Q_OBJECT

    std::unique_ptr<ContestDesk> desk_;
    QStringList faults_;

    using Look = std::function<void(QWidget &window, const QString &view)>;

    static void Settle()
    {
        for (int round = 0; round < 3; ++round)
            QCoreApplication::processEvents();
    }
    static void LookAt(QWidget &window, const QString &view, const Look &look)
    {
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        Settle();
        look(window, view);
    }
    // Each window, the larger ones in several states.
    void EachView(const Look &look)
    {
        desk_ = std::make_unique<ContestDesk>();
        desk_->Furnish();
        desk_->StoreMany(60);
        desk_->Write("master.txt", "LU1ABC\r\nLU7ABC\r\n");
        desk_->Start();
        desk_->Main().LoadLogPage(1);
        Form1 &form1 = desk_->Main();
        LookAt(form1, u"Form1"_qs, look);
        for (const char *box : {"Check1", "Check4"})
            desk_->Click(box);
        form1.findChild<SatellitePanel *>()->show();
        desk_->Put("Corresponsal", "LU1ABC");
        LookAt(form1, u"Form1 all"_qs, look);
        Windows &windows = desk_->AllWindows();
        windows.Settings().FillLists();
        TextWindow text(u"TextWindow"_qs, desk_->dialogs, &form1);
        for (QWidget *window :
            std::initializer_list<QWidget *>{&windows.Settings(), &windows.OpenLog(), &windows.Search(),
                &windows.EditContestQso(form1), &windows.ContestLogs(), &windows.CabrilloHeader(form1),
                &windows.About(), &windows.Satellites([] {}), &windows.AdifImport(), &windows.Analysis(),
                &windows.Provinces(), &windows.Backup(), &windows.Profiles(), &windows.CallQsos(), &windows.Closing(),
                &windows.CabrilloText(), &windows.Macros(form1), &windows.PhoneImportHelp(form1),
                &windows.Keyboard(form1), &windows.TestKeyer(form1), &windows.LookupResult(), &windows.Book(), &text}) {
            LookAt(*window, window->objectName(), look);
            LookAtStates(*window, look);
            window->hide();
        }
        desk_->InModal([&] { desk_->DoubleClick("ListView2", 0); },
            [&] {
                LookAt(*desk_->Front(), u"Form5"_qs, look);
                desk_->Front()->hide();
            });
        desk_->InContest(u"CONDOR"_qs, [&] {
            for (const char *mode : {"CW", "SSB"}) {
                desk_->Choose("Combo1", mode);
                desk_->Fill("Corresponsal", "LU1ABC");
                LookAt(*desk_->Front(), QString(u"Form4 "_qs + QString::fromLatin1(mode)), look);
            }
        });
    }
    void LookAtStates(QWidget &window, const Look &look)
    {
        const auto with = [&](const std::initializer_list<const char *> &parts) {
            for (const char *part : parts)
                window.findChild<QWidget *>(QString::fromLatin1(part))->show();
            LookAt(window, window.objectName() + u" all"_qs, look);
        };
        if (window.objectName() == u"Form6") {
            with({"Frame5"});
        } else if (window.objectName() == u"Form11") {
            with({"Frame3"});
        } else if (window.objectName() == u"Form14") {
            with({"Frame5"});
            window.findChild<QCheckBox *>(u"Check1"_qs)->setChecked(true);
            LookAt(window, u"Form14 contacts"_qs, look);
        }
    }
    void Fault(const QString &view, const QWidget *widget, const QString &what)
    {
        const QString fault = view + u": " + Sign(widget) + u": " + what;
        if (!faults_.contains(fault))
            faults_ << fault;
    }

    // --- Keyboard and screen reader

    // From the first control of the walk through all of them by Tab.
    static QList<QWidget *> Walk(QWidget &window)
    {
        QWidget *first = &window;
        do
            first = first->nextInFocusChain();
        while (first != &window
            && !(first->isVisible() && first->window() == &window && first->isEnabled()
                && (first->focusPolicy() & Qt::TabFocus) && !IsPart(first)));
        QList<QWidget *> walk;
        first->setFocus();
        for (int key = 0; key < 300; ++key) {
            QWidget *focused = window.focusWidget();
            if (!focused || walk.contains(focused))
                break;
            walk << focused;
            QTest::keyClick(focused, Qt::Key_Tab);
        }
        return walk;
    }
    // Of radio buttons that belong together only the chosen one is a stop of the walk; arrows lead to the others.
    static bool IsReached(QWidget *control, const QList<QWidget *> &walk)
    {
        if (walk.contains(control) || (control->focusProxy() && walk.contains(control->focusProxy())))
            return true;
        const auto *radio = qobject_cast<QRadioButton *>(control);
        return radio && std::any_of(walk.begin(), walk.end(), [&](QWidget *stop) {
            const auto *other = qobject_cast<QRadioButton *>(stop);
            return other && other->parentWidget() == radio->parentWidget() && other->group() == radio->group();
        });
    }
    void CheckReach(QWidget &window, const QString &view)
    {
        static const QStringList elsewhere{
            u"Form1.Label19"_qs, // the list of summits stands in the menu Ayuda
            u"Form4.ListView1"_qs, // tells of duplicates for some seconds, while the call is typed
            u"Form4.MCheck"_qs, // shows calls, which are typed faster than chosen
        };
        static const QStringList late{
            u"Form1.Combo1"_qs, u"Form5.Command13"_qs, // the button that stores follows the last field
            u"Form7.Command2"_qs, u"Form11.Command4"_qs, u"Form20.Command3"_qs, // what deletes comes last
        };
        const auto in = [&](const QStringList &names, const QWidget *widget) {
            return names.contains(window.objectName() + u'.' + widget->objectName());
        };
        for (QWidget *widget : Shown(window))
            if (TakesInput(widget))
                widget->setEnabled(true);
        const QList<QWidget *> walk = Walk(window);
        for (QWidget *widget : Shown(window))
            if (TakesInput(widget) && !in(elsewhere, widget) && !IsReached(widget, walk))
                Fault(view, widget, u"Tab does not come here"_qs);
        for (int i = 1; i < walk.size(); ++i)
            if (GoesBack(Place(walk[i - 1]), Place(walk[i])) && !in(late, walk[i]))
                Fault(view, walk[i], u"comes after "_qs + walk[i - 1]->objectName());
    }
    // A combo box is named by the caption beside it: Qt tells its choice for its name.
    static QString SpokenName(QWidget *control)
    {
        QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(control);
        if (!qobject_cast<QComboBox *>(control))
            return spoken ? spoken->text(QAccessible::Name) : QString();
        for (const auto &[other, relation] : spoken->relations(QAccessible::Label))
            if (relation & QAccessible::Label)
                return other->text(QAccessible::Name);
        return {};
    }
    // The captions of the frames around a control are told with it.
    static QString Frame(const QWidget *control)
    {
        for (; control; control = control->parentWidget())
            if (const auto *box = qobject_cast<const QGroupBox *>(control))
                return box->title();
        return {};
    }
    void CheckNames(QWidget &window, const QString &view)
    {
        QMap<QString, QWidget *> named;
        for (QWidget *widget : Shown(window)) {
            if (!TakesInput(widget))
                continue;
            const QString name = SpokenName(widget), whole = Frame(widget) + u'/' + name;
            if (name.trimmed().isEmpty())
                Fault(view, widget, u"has no name"_qs);
            else if (named.contains(whole))
                Fault(view, widget, u"is called \"%1\" like %2"_qs.arg(name, named[whole]->objectName()));
            named[whole] = widget;
            if (const auto *tree = qobject_cast<QTreeView *>(widget); tree && !tree->isHeaderHidden())
                for (int column = 0; column < tree->model()->columnCount(); ++column)
                    if (!tree->isColumnHidden(column)
                        && tree->model()->headerData(column, Qt::Horizontal).toString().isEmpty())
                        Fault(view, widget, u"column %1 has no title"_qs.arg(column));
        }
    }
    void CheckLetters(QWidget &window, const QString &view)
    {
        QMap<QString, QString> letters;
        const auto add = [&](const QString &caption, const QWidget *widget) {
            const QString letter = QKeySequence::mnemonic(caption).toString();
            if (letter.isEmpty())
                return;
            if (letters.contains(letter))
                Fault(view, widget, letter + u" belongs to " + letters[letter] + u" and to " + caption);
            letters[letter] = caption;
        };
        for (const QWidget *widget : Shown(window)) {
            if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
                add(button->text(), widget);
            else if (const auto *box = qobject_cast<const QGroupBox *>(widget))
                add(box->title(), widget);
            else if (const auto *label = qobject_cast<const QLabel *>(widget); label && label->buddy())
                add(label->text(), widget);
            else if (const auto *menu = qobject_cast<const QMenuBar *>(widget))
                for (const QAction *entry : menu->actions())
                    add(entry->text(), widget);
        }
        for (const QMenu *menu : window.findChildren<QMenu *>()) {
            letters.clear();
            for (const QAction *entry : menu->actions())
                add(entry->text(), menu);
        }
    }

    // --- Colours

    void CheckColours(QWidget &window, const QString &view)
    {
        for (QWidget *widget : Shown(window)) {
            if (!widget->isEnabled() || IsPart(widget))
                continue;
            for (const Reading &reading : Readings(widget))
                if (Contrast(reading.text, reading.ground)
                    < (reading.text == QColor(255, 0, 0) ? leastOfRed : leastContrast))
                    Fault(view, widget,
                        u"%1 on %2 reads with %3"_qs.arg(reading.text.name(), reading.ground.name())
                            .arg(Contrast(reading.text, reading.ground), 0, 'f', 2));
        }
    }

    // --- Sizes

    void CheckRoom(QWidget &window, const QString &view)
    {
        // These show all that there is of a contact.
        static const QStringList wide{u"Form1"_qs, u"Form1 all"_qs, u"Form6"_qs, u"Form6 all"_qs};
        const QSize screen = window.screen()->availableSize();
        if (screen.width() >= 1280 && (window.width() > screen.width() || window.height() > screen.height()))
            Fault(view, &window, u"%1x%2 is larger than the screen"_qs.arg(window.width()).arg(window.height()));
        // On the screen that a window is drawn for and on larger ones its letters keep their share.
        const double wanted = std::min(screen.width() / 1366.0, screen.height() / 768.0);
        if (wanted >= 1 && ScaleOf(&window) < wanted * 0.98)
            Fault(view, &window, u"letters of %1, with room for %2"_qs.arg(ScaleOf(&window)).arg(wanted));
        for (QWidget *widget : Shown(window)) {
            if (const int missing = IsPart(widget) ? 0 : CutOff(widget); missing > 0)
                Fault(view, widget, u"%1 pixels are missing"_qs.arg(missing));
            QWidget *parent = widget->parentWidget();
            if (const auto *list = qobject_cast<ReportView *>(widget); list && !wide.contains(view))
                if (screen.width() >= 1280 && list->horizontalScrollBar()->maximum() > 0)
                    Fault(view, widget, u"scrolls sideways"_qs);
            const bool scrolls = qobject_cast<QAbstractScrollArea *>(parent)
                || qobject_cast<QAbstractScrollArea *>(parent->parentWidget());
            if (!scrolls && !parent->rect().contains(widget->geometry()))
                Fault(view, widget, u"lies outside of "_qs + parent->objectName());
        }
    }

    void Tell() const
    {
        for (const QString &fault : faults_)
            qWarning("%s", qPrintable(fault));
        QVERIFY(faults_.isEmpty());
    }

private Q_SLOTS:
    void init()
    {
        // The program's own fonts and measures; the other tests do without.
        SetUpLook(*qApp);
        faults_.clear();
    }
    void cleanup()
    {
        desk_.reset();
        ApplyWindowTheme(Theme::Light);
    }

    void EachControlIsReachedAndNamed()
    {
        EachView([this](QWidget &window, const QString &view) {
            CheckNames(window, view);
            CheckLetters(window, view);
            CheckReach(window, view);
        });
        Tell();
    }

    void EachTextReads()
    {
        EachView([this](QWidget &window, const QString &view) {
            for (const bool dark : {false, true}) {
                ApplyWindowTheme(dark ? Theme::Dark : Theme::Light);
                Settle();
                CheckColours(window, view + (dark ? u" dark" : u" light"));
            }
        });
        Tell();
    }

    // Answers of services are written in colours of their own, on a plain field or beside it.
    void EachAnswerReads()
    {
        for (const Theme theme : {Theme::Light, Theme::Dark}) {
            const QPalette palette = ThemePalette(theme);
            ApplyWindowTheme(theme);
            for (const QColor &colour : {AnswerColours::Good(), AnswerColours::Bad(), AnswerColours::Own()}) {
                const double least = colour == QColor(255, 0, 0) ? leastOfRed : leastContrast;
                for (const auto ground : {QPalette::Base, QPalette::Window})
                    QVERIFY(Contrast(colour, palette.color(ground)) >= least);
            }
        }
    }

    void NothingIsCut()
    {
        EachView([this](QWidget &window, const QString &view) { CheckRoom(window, view); });
        Tell();
    }
};

TORDILLO_TEST(TestAccessibility)
#include "TestAccessibility.moc"
