// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form14_Provinces.h"

#include "core/Services.h"
#include "online/WebText.h"
#include "stats/LdaMember.h"
#include "ui/Program.h"
#include "ui/ServicePage.h"
#include "ui/WindowScaler.h"
#include "ui_Form14_Provinces.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScreen>
#include <QStyledItemDelegate>

namespace {

constexpr int shownColumns = 18, callColumn = 2;
constexpr int narrowList = 210, flatList = 64; // of members: beside the table, below the contacts
constexpr int pictureSide = 128; // drawn large, so that it can be shown at any scale
const QString askingText = u"Consultando LdA ..."_qs;
const QString memberPath = u"/php/tordillo55.php?"_qs;

// Narrower than in a search: all of them fit beside each other.
QList<int> QsoWidths()
{
    QList<int> widths = SearchModel::Widths().first(shownColumns);
    for (const auto &[column, width] :
        {std::pair{0, 780}, {1, 700}, {6, 600}, {7, 600}, {8, 1240}, {10, 900}, {12, 1850}, {15, 560}, {17, 1440}})
        widths[column] = width;
    return widths;
}

// Squares stand side by side, as many as the width takes.
class GridDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const override
    {
        return {option.fontMetrics.horizontalAdvance(u"MM00"_qs) + 6, option.fontMetrics.height() + 2};
    }
};

void FillGrids(QListWidget &list, QGroupBox &frame, const QString &caption, const QStringList &grids)
{
    list.clear();
    QStringList sorted = grids;
    sorted.sort();
    list.addItems(sorted);
    frame.setTitle(caption + u" ("_qs + QString::number(grids.size()) + u')');
}

} // namespace

int ProvinceQsoModel::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : shownColumns; }

QVariant ProvinceQsoModel::data(const QModelIndex &index, int role) const
{
    const QVariant shown = SearchModel::data(index, role);
    return role == Qt::DisplayRole && index.column() == callColumn ? shown.toString().toUpper() : shown;
}

Form14::Form14(Program &program, QWidget *owner)
    : Window(u"Form14"_qs, program.dialogs, owner)
    , program_(program)
    , ui_(std::make_unique<Ui::Form14>())
    , qsos_(program.logbook.Store())
    , client_(program.scheduler)
{
    ui_->setupUi(this);
    setWindowTitle(u"Argentina en LdA"_qs);
    SetUpLists();
    Connect();
    resize(1240, 690);
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form14::~Form14() = default;

void Form14::SetUpLists()
{
    ui_->ListView2->setModel(&provinces_);
    ui_->ListView2->SetUpColumns();
    ui_->ListView1->setModel(&qsos_);
    ui_->ListView1->SetColumnTwips(QsoWidths(), {u"00000"_qs, u"00000"_qs, u"WW9WWWW"_qs});
    for (QListWidget *grids : {ui_->List1, ui_->List2}) {
        grids->setFlow(QListView::LeftToRight);
        grids->setWrapping(true);
        grids->setResizeMode(QListView::Adjust);
        grids->setSpacing(1);
        grids->setUniformItemSizes(true);
        grids->setItemDelegate(new GridDelegate(grids));
    }
    const auto explain = [](QLabel *picture, QLabel *text, ProvinceState state) {
        picture->setPixmap(ProvinceModel::StateIcon(state).pixmap(pictureSide));
        text->setText(ProvinceModel::StateText(state));
    };
    explain(ui_->Image1, ui_->leyenda1, ProvinceState::Worked);
    explain(ui_->Image2, ui_->leyenda2, ProvinceState::Uploaded);
    explain(ui_->Image3, ui_->leyenda3, ProvinceState::Confirmed);
    ui_->Image4->setPixmap(QIcon(u":/icons/mundo.svg"_qs).pixmap(pictureSide));
    ShowFocusOn({ui_->Image4});
}

void Form14::Connect()
{
    ui_->ListView2->SortBy(this, [this](int column) { SortBy(column); });
    connect(ui_->Check1, &QCheckBox::toggled, this, [this](bool on) { ShowQsos(on); });
    connect(ui_->Command1, &QPushButton::clicked, this, &Form14::AskMembers);
    connect(ui_->Command2, &QPushButton::clicked, this, [this] {
        StopAsking();
        ui_->Frame5->hide();
    });
    connect(ui_->Image4, &ClickLabel::DoubleClicked, this, &Form14::OpenSite);
}

void Form14::ShowStatistics(QWidget &owner, const QString &source, const ProvinceStatistics &statistics)
{
    if (parentWidget() != &owner)
        setParent(&owner, windowFlags());
    ui_->origen->setText(source);
    ui_->origen->setToolTip(source);
    Fill(statistics);
    ui_->Check1->setChecked(false);
    ui_->Frame5->hide();
    ui_->ListView2->setFocus();
    ShowModal();
    StopAsking();
    qsos_.Clear();
}

void Form14::Fill(const ProvinceStatistics &statistics)
{
    const ProvinceTally &tally = statistics.tally;
    qsos_.Clear();
    qsos_.Append(statistics.ids);
    ascending_ = false;
    provinces_.Show(tally.Table());
    ui_->ProgressBar1->setValue(provinces_.rowCount());
    ui_->ListView2->header()->setSortIndicatorShown(false);
    ui_->ListView2->setCurrentIndex(provinces_.index(0, ProvinceModel::Province));
    const int confirmed = tally.Table().ConfirmedAnywhere(), worked = tally.Table().WorkedAnywhere();
    ui_->resumen->setText(u"%1 confirmada%2 y %3 trabajada%4, de %5 provincias"_qs.arg(confirmed)
                              .arg(confirmed == 1 ? u""_qs : u"s"_qs)
                              .arg(worked)
                              .arg(worked == 1 ? u""_qs : u"s"_qs)
                              .arg(ProvinceTable::provinces));
    FillGrids(*ui_->List1, *ui_->Frame2, u"Confirmadas"_qs, tally.ConfirmedGrids());
    FillGrids(*ui_->List2, *ui_->Frame3, u"Trabajadas"_qs, tally.WorkedGrids());
}

// The list of contacts takes the room of the grids; what explains the table goes with it. The members go below the
// list then, flat, so that all its columns keep their room.
void Form14::ShowQsos(bool on)
{
    ui_->filas32->setDirection(on ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    ui_->filas38->setDirection(on ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    const double scale = ScaleOf(this);
    ui_->List3->setMaximumSize(
        on ? QSize(QWIDGETSIZE_MAX, int(flatList * scale)) : QSize(int(narrowList * scale), QWIDGETSIZE_MAX));
    ui_->tablas->setCurrentIndex(on);
    for (QWidget *part : std::initializer_list<QWidget *>{ui_->grillas, ui_->Frame2, ui_->Frame3, ui_->Image1,
             ui_->leyenda1, ui_->Image2, ui_->leyenda2, ui_->Image3, ui_->leyenda3})
        part->setVisible(!on);
}

void Form14::SortBy(int column)
{
    ascending_ = !ascending_;
    provinces_.SortBy(column, ascending_);
    ui_->ListView2->header()->setSortIndicatorShown(true);
    ui_->ListView2->header()->setSortIndicator(column, ascending_ ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void Form14::AskMembers()
{
    if (request_)
        return;
    ui_->List3->clear();
    ui_->consulta->setText(askingText);
    ui_->consulta->show();
    ui_->Frame5->show();
    ui_->List3->setFocus();
    ui_->Command1->setEnabled(false);
    request_ = std::make_unique<PolledRequest>(
        client_, program_.scheduler, ServiceAddress(program_.logbook, Service::Lda) + memberPath,
        [this](int ticks) { ui_->consulta->setText(askingText + u" %1 s"_qs.arg(ticks)); },
        [this](const WebReply &reply) {
            StopAsking();
            ShowMembers(reply);
        });
}

void Form14::ShowMembers(const WebReply &reply)
{
    if (!reply.Answered()) {
        dialogs().Message(this, QString(NoConnectionText::polled + u'\n' + reply.Cause()).trimmed());
        return;
    }
    const auto member = reply.IsGood() ? ReadLdaMember(WebText::PageText(reply.text)) : std::nullopt;
    if (!member) {
        dialogs().Message(this, u"La respuesta de LdA no trae ningún miembro."_qs);
        return;
    }
    ui_->List3->addItem(member->Line());
    ui_->List3->setCurrentRow(ui_->List3->count() - 1);
}

void Form14::StopAsking()
{
    request_.reset();
    ui_->consulta->hide();
    ui_->Command1->setEnabled(true);
}

void Form14::OpenSite() { OpenServicePage(program_, this, Service::LdaSite); }

bool Form14::PreviewKey(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else if (event->key() == Qt::Key_Space && CurrentField() == ui_->Image4 && !event->isAutoRepeat())
        OpenSite();
    else
        return false;
    return true;
}

// The table that is shown.
QWidget *Form14::FocusFallback() const
{
    if (ui_->Check1->isChecked())
        return ui_->ListView1;
    return ui_->ListView2;
}
