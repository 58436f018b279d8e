// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Form20_Macros.h"

#include "ui/WindowScaler.h"
#include "ui_Form20_Macros.h"

#include <QKeyEvent>
#include <QScreen>

Form20::Form20(Logbook &logbook, Dialogs &dialogs, QWidget *owner)
    : Window(u"Form20"_qs, dialogs, owner)
    , logbook_(logbook)
    , ui_(std::make_unique<Ui::Form20>())
{
    ui_->setupUi(this);
    setWindowTitle(u"Macros CW"_qs);
    fields_ = {ui_->Text1_0, ui_->Text1_1, ui_->Text1_2, ui_->Text1_3, ui_->Text1_4, ui_->Text1_5, ui_->Text1_6};
    for (QLineEdit *field : fields_)
        ShowFocusOn({field});
    connect(ui_->Command1, &QPushButton::clicked, this, [this] {
        MacroTexts texts;
        for (size_t i = 0; i < texts.size(); ++i)
            texts[i] = fields_[i]->text();
        Keep(texts);
    });
    connect(ui_->Command2, &QPushButton::clicked, this, [this] {
        outcome_ = Outcome::Finished;
        close();
    });
    connect(ui_->Command3, &QPushButton::clicked, this, [this] { Keep(DefaultMacros()); });
    FillHelp();
    CaptureLayout(this);
    FitToScreen(this, screen()->availableSize(), true);
}

Form20::~Form20() = default;

// "Subir" has stood beside "<" from the first; operators know the marks by this table and by ear.
void Form20::FillHelp()
{
    const std::pair<QLabel *, QString> texts[] = {{ui_->Label2_0, u"VARIABLES:"_qs},
        {ui_->Label2_1, u"Mi Señal Distintiva:"_qs}, {ui_->Label3_1, u"#MISD#"_qs},
        {ui_->Label2_2, u"Su Señal Distintiva:"_qs}, {ui_->Label3_2, u"#SUSD#"_qs},
        {ui_->Label2_3, u"Serie Enviada:"_qs}, {ui_->Label3_3, u"#SERIE#"_qs}, {ui_->Label2_4, u"RST:"_qs},
        {ui_->Label3_4, u"#RST#"_qs}, {ui_->Label2_6, u"Subir velocidad 4ppm:"_qs}, {ui_->Label3_6, u"<"_qs},
        {ui_->Label2_7, u"Bajar velocidad 4ppm:"_qs}, {ui_->Label3_7, u">"_qs}};
    for (const auto &[label, text] : texts) {
        label->setTextFormat(Qt::PlainText);
        label->setText(text);
    }
}

Form20::Outcome Form20::Edit(MacroTexts &macros)
{
    macros_ = &macros;
    outcome_ = Outcome::Escaped;
    MacroTexts texts = macros;
    if (const Result<void> loaded = LoadMacros(logbook_, texts); !loaded)
        dialogs().Message(this, loaded.failure().text, Dialogs::Icon::Critical);
    for (size_t i = 0; i < texts.size(); ++i)
        fields_[i]->setText(texts[i]);
    fields_[0]->setFocus();
    ShowModal();
    return outcome_;
}

void Form20::Keep(const MacroTexts &texts)
{
    if (const Result<void> saved = SaveMacros(logbook_, texts); !saved) {
        dialogs().Message(this, saved.failure().text, Dialogs::Icon::Critical);
        return;
    }
    *macros_ = texts;
    outcome_ = Outcome::Finished;
    close();
}

bool Form20::PreviewKey(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return false;
    close();
    return true;
}
