// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/AccountCheck.h"

#include "core/Services.h"
#include "ui/AnswerColours.h"
#include "ui/Program.h"
#include "ui/Window.h"

#include <QEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

AccountCheck::AccountCheck(Program &program, Window &window, Controls controls)
    : QObject(&window)
    , program_(program)
    , controls_(controls)
    , client_(program.scheduler)
{
    controls_.ProgressBar1->setMaximum(PolledRequest::mostTicks);
    controls_.Label3->setTextFormat(Qt::PlainText);
    window.installEventFilter(this);
    connect(controls_.Command4, &QPushButton::clicked, this, &AccountCheck::Begin);
}

AccountCheck::~AccountCheck() = default;

void AccountCheck::Begin()
{
    const Configuration &configuration = program_.logbook.configuration;
    const AccountTest::Account account{ServiceAddress(program_.logbook, Service::Lda), configuration.UserLdA,
        configuration.PassLdA, configuration.Estacion};
    controls_.Command4->setEnabled(false);
    Show({AccountTest::Asking(account), false});
    request_ = std::make_unique<PolledRequest>(
        client_, program_.scheduler, AccountTest::Address(account),
        [this](int ticks) { controls_.ProgressBar1->setValue(ticks); },
        [this, account](const WebReply &reply) {
            Show(AccountTest::Judge(account, reply));
            End();
        });
}

void AccountCheck::End()
{
    request_.reset();
    controls_.ProgressBar1->setValue(0);
    controls_.Command4->setEnabled(true);
}

void AccountCheck::Show(const AccountTest::Verdict &verdict)
{
    QPalette palette;
    if (verdict.noConnection)
        palette.setColor(QPalette::WindowText, AnswerColours::Bad());
    controls_.Label3->setPalette(palette);
    constexpr qsizetype longest = 2000; // of an error page
    const QString text = verdict.text.left(longest);
    controls_.Label3->setText(text);
    controls_.Label3->setToolTip(text);
}

bool AccountCheck::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Hide && !event->spontaneous()) {
        End();
        Show({});
    }
    return false;
}
