// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/SatellitePanel.h"

#include "core/FieldMemory.h"
#include "core/TextFile.h"
#include "ui/Choice.h"
#include "ui/Program.h"
#include "ui/ServicePage.h"
#include "ui/Window.h"
#include "ui_SatellitePanel.h"

#include <QIcon>

namespace {

const QString catalogueName = u"satelites.txt"_qs;

// A damaged catalogue must not make the window wider than the screen.
constexpr qsizetype longestText = 40;

// The picture flies from right to left, in twips as the sky was drawn.
constexpr int pictureSide = 128; // drawn large, so that it can be shown at any scale
constexpr int pictureStep = 30, pictureEnd = -1000, pictureStart = 4080;

} // namespace

SatellitePanel::SatellitePanel(Program &program, QWidget *parent)
    : QWidget(parent)
    , program_(program)
    , ui_(std::make_unique<Ui::SatellitePanel>())
{
    ui_->setupUi(this);
    Choice::OnlyByClick(ui_->Combo3);
    ui_->Command15->setEnabled(false);
    ui_->Frame2->hide();
    Image2_ = new QLabel(ui_->cieloImage2);
    Image2_->setObjectName(u"Image2"_qs);
    Image2_->setPixmap(QIcon(u":/icons/satelite.svg"_qs).pixmap(pictureSide));
    Image2_->setScaledContents(true);
    Image2_->setFixedSize(22, 22); // grows with the window
    Timer9_ = program_.scheduler.Make(150, [this] { MovePicture(); });
    Window::ShowFocusOn({ui_->Combo3});
    connect(ui_->Combo3, &QComboBox::activated, this, [this] {
        const QString name = ui_->Combo3->currentText();
        if (!ShowSatellite(name))
            return;
        static_cast<void>(SaveSatelliteMemory(program_.logbook, name));
        Q_EMIT SatelliteClicked();
    });
    connect(ui_->Command15, &QPushButton::clicked, this, [this] { OpenServicePage(program_, this, Service::Passes); });
}

SatellitePanel::~SatellitePanel() = default;

void SatellitePanel::WriteDefaultSatellites()
{
    const Logbook &logbook = program_.logbook;
    const QString path = logbook.PathOf(catalogueName);
    if (!logbook.Files().Exists(path))
        static_cast<void>(TextFile::WriteLines(logbook.Files(), path, DefaultSatellites(), FileSystem::Sync::No));
}

void SatellitePanel::LoadSatellites()
{
    const Logbook &logbook = program_.logbook;
    const auto lines = TextFile::ReadLines(logbook.Files(), logbook.PathOf(catalogueName));
    catalogue_ = ReadSatellites(lines.value_or(DefaultSatellites()));
    ui_->Combo3->clear();
    for (const SatelliteRow &row : catalogue_)
        ui_->Combo3->addItem(row.name.left(longestText));
    Choice::Show(ui_->Combo3, {});
    if (const auto labels = LastRowLabels(catalogue_))
        ShowLabels(*labels);
}

void SatellitePanel::RestoreSatellite()
{
    const QString name = ReadSatelliteMemory(program_.logbook);
    if (name.isEmpty())
        return;
    Choice::Show(ui_->Combo3, name);
    ShowSatellite(name);
}

bool SatellitePanel::ShowSatellite(const QString &name)
{
    const SatelliteRow *row = FindSatellite(catalogue_, name);
    if (!row)
        return false;
    ShowLabels(ClickLabels(*row));
    return true;
}

void SatellitePanel::ShowLabels(const SatelliteLabels &labels)
{
    ui_->Subida->setText(labels.subida.left(longestText));
    ui_->Bajada->setText(labels.bajada.left(longestText));
    ui_->Modo->setText(labels.modo.left(longestText));
    ui_->Subtono->setText(labels.subtono.left(longestText));
}

void SatellitePanel::SetActive(bool active)
{
    ui_->Frame2->setVisible(active);
    ui_->Command15->setEnabled(active);
    if (active)
        Timer9_->Start();
    else
        Timer9_->Stop();
}

bool SatellitePanel::IsActive() const { return !ui_->Frame2->isHidden(); }

QString SatellitePanel::Satellite() const { return ui_->Combo3->currentText(); }

QString SatellitePanel::Mode() const { return ui_->Modo->text().remove(u"Modo: "_qs); }

UplinkFrequency SatellitePanel::Uplink() const { return ApplyUplink(ui_->Subida->text()); }

QWidget *SatellitePanel::NameField() const { return ui_->Combo3; }

void SatellitePanel::MovePicture()
{
    pictureLeft_ -= pictureStep;
    if (pictureLeft_ <= pictureEnd)
        pictureLeft_ = pictureStart;
    Image2_->move(pictureLeft_ * ui_->cieloImage2->width() / pictureStart, 0);
}
