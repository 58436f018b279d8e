// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/WindowScaler.h"

#include <QEvent>
#include <QGridLayout>
#include <QHash>
#include <QHeaderView>
#include <QLayout>
#include <QWidget>
#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace {

constexpr double leastScale = 0.8, mostScale = 3;
constexpr double drawnWidth = 1366, drawnHeight = 768;

// A length that follows the scale. Kept as what it is at scale 1, so that repeated rounding does not make it drift.
struct Length {
    double atOne = 0;
    double shown = -1;

    // What `now`, seen at scale `from`, becomes at scale `to`.
    double Rescale(double now, double from, double to, bool whole = true)
    {
        if (std::abs(now - shown) > 0.05)
            atOne = now / from;
        shown = whole ? std::round(atOne * to) : atOne * to;
        return shown;
    }
};

struct Control {
    bool scaled = false; // not yet: its sizes are those of scale 1
    bool ownFontSize = false;
    Length font;
    std::array<Length, 4> limits; // least width and height, most width and height
    std::map<int, Length> sections; // of a header; -1 is the common height of the rows
};

double FontSize(const QFont &font) { return font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize(); }

QFont WithSize(QFont font, double size)
{
    if (font.pointSizeF() > 0)
        font.setPointSizeF(size);
    else
        font.setPixelSize(int(std::round(size)));
    return font;
}

// The mask of a font carries what is inherited too, even from the owner of a dialog: only another size than the
// parent's tells one that was set.
bool HasOwnFontSize(const QWidget *widget)
{
    return widget->testAttribute(Qt::WA_SetFont) && (widget->font().resolveMask() & QFont::SizeResolved)
        && std::abs(FontSize(widget->font()) - FontSize(widget->parentWidget()->font())) > 0.01;
}

} // namespace

// One per captured window, its child.
class LayoutScaler : public QObject {
    Q_OBJECT

public:
    explicit LayoutScaler(QWidget *window)
        : QObject(window)
        , window_(window)
    {
        window->installEventFilter(this);
    }

    static LayoutScaler *Of(const QWidget *window)
    {
        return window->findChild<LayoutScaler *>(QString(), Qt::FindDirectChildrenOnly);
    }

    double scale() const { return scale_; }

    void Capture()
    {
        controls_.clear();
        layouts_.clear();
        scale_ = 1;
        captured_ = window_->size().expandedTo(window_->minimumSizeHint());
        window_->resize(captured_);
        // A minimum of its own: else the layout would hold the window at what the present scale needs, and it could
        // never shrink again.
        window_->setMinimumSize(captured_ * leastScale);
        ScaleControls(1);
    }

    void Apply()
    {
        if (applying_)
            return;
        applying_ = true;
        const double wanted =
            std::min(double(window_->width()) / captured_.width(), double(window_->height()) / captured_.height());
        double scale = std::clamp(wanted, leastScale, mostScale);
        if (std::abs(scale - scale_) > 0.002)
            ScaleControls(scale);
        ShrinkUntilItFits();
        applying_ = false;
    }

    // Something in the window changed its size or was added.
    void Adopt()
    {
        if (applying_)
            return;
        applying_ = true;
        ScaleControls(scale_);
        ShrinkUntilItFits();
        applying_ = false;
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Resize)
            Apply();
        else if (event->type() == QEvent::LayoutRequest)
            Adopt();
        return false;
    }

private:
    QSize Needed() const { return window_->layout() ? window_->layout()->totalMinimumSize() : QSize(0, 0); }

    bool Fits() const
    {
        const QSize needed = Needed();
        return needed.width() <= window_->width() && needed.height() <= window_->height();
    }

    void ShrinkUntilItFits()
    {
        while (!Fits() && scale_ > leastScale)
            ScaleControls(std::max(leastScale, scale_ * 0.97));
        if (!Fits())
            window_->setMinimumSize(Needed().expandedTo(window_->minimumSize()));
    }

    void ScaleControls(double to)
    {
        const QList<QWidget *> widgets = Widgets();
        for (const QWidget *widget : widgets) // before a new size of the window can equal theirs
            Known(widget).ownFontSize |= HasOwnFontSize(widget);
        const double size = Known(window_).font.Rescale(FontSize(window_->font()), scale_, to, false);
        if (std::abs(size - FontSize(window_->font())) > 0.01)
            window_->setFont(WithSize(window_->font(), size));
        for (QWidget *widget : widgets)
            ScaleControl(widget, to);
        for (QLayout *layout : window_->findChildren<QLayout *>())
            if (layout->parentWidget() && layout->parentWidget()->window() == window_)
                ScaleLayout(layout, to);
        scale_ = to;
    }

    // The controls of the window, each behind the one it lies in.
    QList<QWidget *> Widgets() const
    {
        QList<QWidget *> widgets = window_->findChildren<QWidget *>();
        widgets.removeIf([this](const QWidget *widget) { return widget->window() != window_; });
        return widgets;
    }

    // The room between controls grows with them.
    void ScaleLayout(QLayout *layout, double to)
    {
        const bool isNew = !layouts_.contains(layout);
        if (isNew)
            connect(layout, &QObject::destroyed, this, [this, layout] { layouts_.remove(layout); });
        Room &room = layouts_[layout];
        const double from = isNew ? 1 : scale_;
        const QMargins now = layout->contentsMargins();
        const QMargins margins(int(room.sides[0].Rescale(now.left(), from, to)),
            int(room.sides[1].Rescale(now.top(), from, to)), int(room.sides[2].Rescale(now.right(), from, to)),
            int(room.sides[3].Rescale(now.bottom(), from, to)));
        if (margins != now)
            layout->setContentsMargins(margins);
        // Setting the same room again would ask for a new layout, and that for its scaling, without end.
        const auto rescaled = [&](size_t which, int gap) { return int(room.gaps[which].Rescale(gap, from, to)); };
        if (auto *grid = qobject_cast<QGridLayout *>(layout)) {
            const int across = grid->horizontalSpacing(), down = grid->verticalSpacing();
            if (across > 0 && rescaled(0, across) != across)
                grid->setHorizontalSpacing(rescaled(0, across));
            if (down > 0 && rescaled(1, down) != down)
                grid->setVerticalSpacing(rescaled(1, down));
        } else if (const int gap = layout->spacing(); gap > 0 && rescaled(0, gap) != gap) {
            layout->setSpacing(rescaled(0, gap));
        }
    }

    void ScaleControl(QWidget *widget, double to)
    {
        Control &control = Known(widget);
        const double from = control.scaled ? scale_ : 1;
        control.scaled = true;
        control.ownFontSize |= HasOwnFontSize(widget); // set to what the window had, and left behind by it now
        if (control.ownFontSize) {
            const double now = FontSize(widget->font());
            const double size = control.font.Rescale(now, from, to, false);
            if (std::abs(size - now) > 0.01)
                widget->setFont(WithSize(widget->font(), size));
        }
        ScaleLimits(widget, control, from, to);
        if (auto *header = qobject_cast<QHeaderView *>(widget))
            ScaleSections(header, control, to);
    }

    static void ScaleLimits(QWidget *widget, Control &control, double from, double to)
    {
        auto scaled = [&](size_t which, int now) {
            if (now <= 0 || now >= QWIDGETSIZE_MAX)
                return now;
            return std::min(int(control.limits[which].Rescale(now, from, to)), QWIDGETSIZE_MAX);
        };
        const QSize least(scaled(0, widget->minimumWidth()), scaled(1, widget->minimumHeight()));
        const QSize most(scaled(2, widget->maximumWidth()), scaled(3, widget->maximumHeight()));
        if (least != widget->minimumSize())
            widget->setMinimumSize(least);
        if (most != widget->maximumSize())
            widget->setMaximumSize(most);
    }

    // Columns come and go with the model, so they are told pixels of the present scale at any time.
    void ScaleSections(QHeaderView *header, Control &control, double to)
    {
        if (header->orientation() == Qt::Vertical) {
            const double height = control.sections[-1].Rescale(header->defaultSectionSize(), scale_, to);
            if (int(height) != header->defaultSectionSize())
                header->setDefaultSectionSize(int(height));
            return;
        }
        for (int i = 0; i < header->count(); ++i) {
            const QHeaderView::ResizeMode mode = header->sectionResizeMode(i);
            const int now = header->sectionSize(i);
            if (now == 0 || (mode != QHeaderView::Interactive && mode != QHeaderView::Fixed))
                continue;
            const auto width = int(control.sections[i].Rescale(now, scale_, to));
            if (width != now)
                header->resizeSection(i, width);
        }
    }

    Control &Known(const QWidget *widget)
    {
        if (!controls_.contains(widget))
            connect(widget, &QObject::destroyed, this, [this, widget] { controls_.remove(widget); });
        return controls_[widget];
    }

    QWidget *window_;
    QSize captured_;
    double scale_ = 1;
    bool applying_ = false;
    QHash<const QWidget *, Control> controls_;
    struct Room {
        std::array<Length, 4> sides; // left, top, right, bottom
        std::array<Length, 2> gaps; // across, down
    };
    QHash<QLayout *, Room> layouts_;
};

void CaptureLayout(QWidget *window)
{
    LayoutScaler *scaler = LayoutScaler::Of(window);
    (scaler ? scaler : new LayoutScaler(window))->Capture();
}

void FitToScreen(QWidget *window, QSize screen, bool keepProportions)
{
    double across = screen.width() / drawnWidth, down = screen.height() / drawnHeight;
    if (keepProportions)
        across = down = std::min(across, down);
    const QPoint corner = window->pos();
    const QSize size(int(std::round(window->width() * across)), int(std::round(window->height() * down)));
    window->move(int(std::round(corner.x() * across)), int(std::round(corner.y() * down)));
    window->resize(size.boundedTo(screen));
    ApplyLayout(window); // a hidden window gets its resize event only when it is shown
}

void ApplyLayout(QWidget *window)
{
    if (LayoutScaler *scaler = LayoutScaler::Of(window))
        scaler->Apply();
}

double ScaleOf(const QWidget *window)
{
    const LayoutScaler *scaler = LayoutScaler::Of(window);
    return scaler ? scaler->scale() : 1;
}

#include "WindowScaler.moc"
