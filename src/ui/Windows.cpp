// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Windows.h"

#include "ui/Form17_CallQsos.h"
#include "ui/Form1_Main.h"
#include "ui/Form2_Settings.h"
#include "ui/Program.h"

#include <QtGlobal>

namespace {

template <typename Form, typename... Arguments>
Form &Made(std::unique_ptr<Form> &form, Arguments &&...arguments)
{
    if (!form)
        form = std::make_unique<Form>(std::forward<Arguments>(arguments)...);
    return *form;
}

} // namespace

Windows::Windows()
{
    // Resources of a static library are not found without this.
    Q_INIT_RESOURCE(icons);
}


Windows::~Windows() = default;

Form1 &Windows::Main() { return Made(form1_, *program_); }
Form2 &Windows::Settings() { return Made(form2_, *program_, &Main()); }
Form17 &Windows::CallQsos() { return Made(form17_, program_->dialogs, &Main()); }
