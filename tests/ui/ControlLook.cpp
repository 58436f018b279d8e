// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ControlLook.h"

#include "ui/ClickLabel.h"
#include "ui/Field.h"
#include "ui/ReportView.h"
#include "ui/Theme.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOptionComboBox>
#include <QTextBlock>

using ControlLook::Reading;

namespace {

QColor Ground(const QWidget *widget)
{
    while (!widget->isWindow() && !widget->autoFillBackground())
        widget = widget->parentWidget();
    return widget->palette().color(widget->backgroundRole());
}

QList<Reading> ReadingsOfList(const QAbstractItemView &list)
{
    QPalette palette = list.palette();
    if (qobject_cast<const ReportView *>(&list))
        palette = ListRowPalette(CurrentTheme());
    QList<Reading> readings{{palette.color(QPalette::Text), palette.color(QPalette::Base)},
        {palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)}};
    const QAbstractItemModel *model = list.model();
    for (int row = 0; row < std::min(model->rowCount(), 5); ++row)
        for (int column = 0; column < model->columnCount(); ++column) {
            const QVariant own = model->index(row, column).data(Qt::ForegroundRole);
            const QColor text = own.isValid() ? own.value<QColor>() : palette.color(QPalette::Text);
            for (const auto role : {QPalette::Base, QPalette::AlternateBase})
                readings << Reading{text, palette.color(role)};
        }
    return readings;
}

QList<Reading> ReadingsOfDocument(const QTextDocument &document, const QPalette &palette)
{
    QList<Reading> readings{{palette.color(QPalette::Text), palette.color(QPalette::Base)}};
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextCharFormat format = part.fragment().charFormat();
            readings << Reading{format.hasProperty(QTextFormat::ForegroundBrush) ? format.foreground().color()
                                                                                 : palette.color(QPalette::Text),
                format.hasProperty(QTextFormat::BackgroundBrush) ? format.background().color()
                                                                 : palette.color(QPalette::Base)};
        }
    return readings;
}

} // namespace

bool ControlLook::IsPart(const QWidget *widget)
{
    const QWidget *parent = widget->parentWidget();
    return qobject_cast<const QScrollBar *>(widget) || widget->objectName().startsWith(u"qt_")
        || qobject_cast<const QComboBox *>(parent) || qobject_cast<const QAbstractSpinBox *>(parent)
        || (qobject_cast<const QHeaderView *>(widget) && widget->focusPolicy() == Qt::NoFocus);
}

bool ControlLook::TakesInput(const QWidget *widget)
{
    if (IsPart(widget))
        return false;
    return qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLineEdit *>(widget)
        || qobject_cast<const QComboBox *>(widget) || qobject_cast<const QAbstractSpinBox *>(widget)
        || qobject_cast<const QAbstractSlider *>(widget) || qobject_cast<const QAbstractItemView *>(widget)
        || qobject_cast<const QTextEdit *>(widget) || qobject_cast<const QPlainTextEdit *>(widget)
        || qobject_cast<const ClickLabel *>(widget);
}

QList<QWidget *> ControlLook::Shown(const QWidget &window)
{
    QList<QWidget *> shown = window.findChildren<QWidget *>();
    shown.removeIf([&](const QWidget *widget) { return widget->window() != &window || !widget->isVisible(); });
    return shown;
}

QList<Reading> ControlLook::Readings(QWidget *widget)
{
    const QPalette palette = widget->palette();
    const auto pair = [&](QPalette::ColorRole text, QPalette::ColorRole ground) {
        return QList<Reading>{{palette.color(text), palette.color(ground)}};
    };
    if (const auto *edit = qobject_cast<QTextEdit *>(widget))
        return ReadingsOfDocument(*edit->document(), palette);
    if (const auto *list = qobject_cast<QAbstractItemView *>(widget); list && !qobject_cast<QHeaderView *>(widget))
        return ReadingsOfList(*list);
    if (qobject_cast<QLineEdit *>(widget) || qobject_cast<QPlainTextEdit *>(widget))
        return pair(QPalette::Text, QPalette::Base) + pair(QPalette::PlaceholderText, QPalette::Base);
    if (qobject_cast<QPushButton *>(widget) || qobject_cast<QComboBox *>(widget) || qobject_cast<QHeaderView *>(widget))
        return pair(QPalette::ButtonText, QPalette::Button);
    if (qobject_cast<QLabel *>(widget) || qobject_cast<QAbstractButton *>(widget) || qobject_cast<QGroupBox *>(widget)
        || qobject_cast<QMenuBar *>(widget))
        return {{palette.color(QPalette::WindowText), Ground(widget)}};
    return {};
}

int ControlLook::CutOff(QWidget *widget)
{
    if (const auto *label = qobject_cast<QLabel *>(widget)) {
        if (label->text().isEmpty() || label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored)
            return 0;
        if (label->wordWrap())
            return label->heightForWidth(label->width()) - label->height();
        return std::max(label->sizeHint().width() - label->width(), label->sizeHint().height() - label->height());
    }
    if (const auto *combo = qobject_cast<QComboBox *>(widget)) {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        option.editable = combo->isEditable();
        const QRect room =
            combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo);
        int longest = 0;
        for (int i = 0; i < combo->count(); ++i)
            longest = std::max(longest, combo->fontMetrics().horizontalAdvance(combo->itemText(i)));
        return std::max(longest - room.width(), combo->sizeHint().height() - combo->height());
    }
    if (const auto *box = qobject_cast<QGroupBox *>(widget)) {
        return box->fontMetrics().horizontalAdvance(box->title()) - box->width() + 8;
    }
    if (const auto *header = qobject_cast<QHeaderView *>(widget)) {
        int most = 0;
        for (int i = 0; i < header->count(); ++i)
            if (!header->isSectionHidden(i)) {
                const QString title = header->model()->headerData(i, header->orientation()).toString();
                most = std::max(most, header->fontMetrics().horizontalAdvance(title) + 4 - header->sectionSize(i));
            }
        return most;
    }
    if (const auto *button = qobject_cast<QPushButton *>(widget)) {
        const QSize text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
        const int margin = button->fontMetrics().height() / 2;
        return std::max(text.width() + margin - button->width(), text.height() + margin / 2 - button->height());
    }
    if (qobject_cast<QAbstractButton *>(widget))
        return std::max(widget->sizeHint().width() - widget->width(), widget->sizeHint().height() - widget->height());
    if (const auto *field = qobject_cast<Field *>(widget))
        return std::max(field->sizeHint().width() - field->width(), field->sizeHint().height() - field->height());
    if (qobject_cast<QLineEdit *>(widget) || qobject_cast<QAbstractSpinBox *>(widget))
        return widget->sizeHint().height() - widget->height();
    return 0;
}
