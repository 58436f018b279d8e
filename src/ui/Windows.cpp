// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Windows.h"

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
#include "ui/Form1_Main.h"
#include "ui/Form20_Macros.h"
#include "ui/Form21_PhoneImportHelp.h"
#include "ui/Form22_Keyboard.h"
#include "ui/Form2_Settings.h"
#include "ui/Form33_LookupResult.h"
#include "ui/Form3_OpenLog.h"
#include "ui/Form4_Contest.h"
#include "ui/Form5_EditQso.h"
#include "ui/Form6_Search.h"
#include "ui/Form7_EditContestQso.h"
#include "ui/Form8_ContestLogs.h"
#include "ui/Form9_CabrilloHeader.h"
#include "ui/KeyerTest.h"
#include "ui/Manual.h"
#include "ui/Program.h"

#include <QtGlobal>

Windows::Windows()
{
    // Resources of a static library are not found without this.
    Q_INIT_RESOURCE(icons);
}

Windows::~Windows() = default;

template <typename Form, typename... Arguments>
Form &Windows::Made(std::unique_ptr<Form> &form, Arguments &&...arguments)
{
    if (!form) {
        form = std::make_unique<Form>(std::forward<Arguments>(arguments)...);
        QObject::connect(
            form.get(), &Window::HelpWanted, form.get(), [this, asking = form.get()] { Book().ShowFor(*asking); });
    }
    return *form;
}

Manual &Windows::Book()
{
    if (!manual_)
        manual_ = std::make_unique<Manual>(program_->manualFolder, program_->dialogs);
    return *manual_;
}

Form1 &Windows::Main() { return Made(form1_, *program_); }
Form2 &Windows::Settings() { return Made(form2_, *program_, &Main()); }
Form3 &Windows::OpenLog() { return Made(form3_, program_->dialogs, &Main()); }
Form5 &Windows::EditQso() { return Made(form5_, *program_, &Main()); }
Form6 &Windows::Search() { return Made(form6_, *program_, &Main()); }
Form10 &Windows::About() { return Made(form10_, program_->dialogs, &Main()); }
Form11 &Windows::Satellites(std::function<void()> changed)
{
    return Made(form11_, program_->logbook, program_->dialogs, &Main(), std::move(changed));
}
Form16 &Windows::Profiles() { return Made(form16_, program_->logbook, program_->dialogs, &Main()); }
Form4 &Windows::Contest() { return Made(form4_, *program_); }
Form7 &Windows::EditContestQso(QWidget &owner) { return Made(form7_, *program_, &owner); }
Form8 &Windows::ContestLogs() { return Made(form8_, *program_, &Main()); }
Form9 &Windows::CabrilloHeader(QWidget &owner) { return Made(form9_, *program_, &owner); }
Form13 &Windows::Analysis() { return Made(form13_, *program_, &Main()); }
Form18 &Windows::Closing() { return Made(form18_, program_->dialogs, &Main()); }
Form33 &Windows::LookupResult() { return Made(form33_, program_->dialogs, &Main()); }
Form14 &Windows::Provinces() { return Made(form14_, *program_, &Main()); }
Form19 &Windows::CabrilloText() { return Made(form19_, *program_, &Main()); }
Form12 &Windows::AdifImport() { return Made(form12_, *program_, &Main()); }
Form15 &Windows::Backup() { return Made(form15_, *program_, &Main()); }
Form20 &Windows::Macros(QWidget &owner) { return Made(form20_, program_->logbook, program_->dialogs, &owner); }
Form22 &Windows::Keyboard(QWidget &owner) { return Made(form22_, program_->dialogs, &owner); }
KeyerTest &Windows::TestKeyer(QWidget &owner) { return Made(keyerTest_, *program_, &owner); }
Form21 &Windows::PhoneImportHelp(QWidget &owner) { return Made(form21_, program_->dialogs, &owner); }
Form17 &Windows::CallQsos() { return Made(form17_, program_->dialogs, &Main()); }
