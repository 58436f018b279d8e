// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ListUploads.h"

#include "core/Services.h"
#include "ui/AnswerColours.h"
#include "ui/Program.h"
#include "ui/Window.h"

#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBrowser>
#include <QTextCursor>

using Target = ListUpload::Target;

namespace {

QColor ColourOf(ListUpload::Colour colour)
{
    switch (colour) {
    case ListUpload::Colour::Red:
        return AnswerColours::Bad();
    case ListUpload::Colour::Blue:
        return AnswerColours::Own();
    case ListUpload::Colour::Green:
        break;
    }
    return AnswerColours::Good();
}

} // namespace

ListUploads::ListUploads(Program &program, Window &window, Controls controls)
    : QObject(&window)
    , program_(program)
    , window_(window)
    , controls_(controls)
{
    controls_.RichTextBox1->setOpenLinks(false);
    connect(controls_.Command7, &QPushButton::clicked, this, [this] { controls_.Frame5->hide(); });
    connect(controls_.detener, &QPushButton::clicked, this, [this] {
        if (run_)
            run_->Cancel();
    });
}

ListUploads::~ListUploads() = default;

UploadRules::Account ListUploads::AccountFor(Target target) const
{
    const Logbook &logbook = program_.logbook;
    const Configuration &configuration = logbook.configuration;
    if (target == Target::Eqsl)
        return {ServiceAddress(logbook, Service::Eqsl), configuration.eQSLuser, configuration.eQSLpass};
    const bool second = UploadRules::SecureServerFor(configuration.LDAQ_web) == UploadRules::SecureServer::Second;
    return {ServiceAddress(logbook, second ? Service::LdaSecure2 : Service::LdaSecure1), configuration.LDAQuser,
        configuration.LDAQpass};
}

bool ListUploads::AskBefore(qsizetype rows)
{
    return rows <= ListUpload::manyRows
        || program_.dialogs.Confirm(&window_, UploadTexts::manyRows, Dialogs::Icon::Question, Dialogs::Button::No);
}

void ListUploads::Upload(Target target, qsizetype rows, Row row)
{
    if (run_)
        return;
    const UploadRules::Account account = AccountFor(target);
    if (account.user.isEmpty() || account.password.isEmpty()) {
        program_.dialogs.Message(&window_, UploadTexts::noAccount);
        return;
    }
    if (!AskBefore(rows))
        return;
    const bool remarks = program_.dialogs.Ask(&window_, UploadTexts::askRemarks);
    if (rows == 0) {
        program_.dialogs.Message(&window_, UploadTexts::noRows);
        return;
    }
    ShowFrame(target, rows);
    Q_EMIT Working(true);
    run_ = std::make_unique<Run>(program_.logbook.LongWork(), Pump());
    run_->WhenCancelled([this] { upload_->Cancel(); });
    ListUpload::Listener listener;
    listener.row = [this, row = std::move(row)](qsizetype place) {
        const auto texts = row(place);
        sending_ = texts ? QStringList{texts->value(2), texts->value(3), texts->value(5)}.join(u' ') : QString();
        return texts;
    };
    listener.write = [this](const QString &text, ListUpload::Colour colour) { Write(text, colour); };
    listener.progress = [this](const ListUpload::Counts &counts) { ShowProgress(counts); };
    listener.ended = [this, target](ListUpload::End end, const ListUpload::Counts &counts, const QString &cause) {
        Ended(target, end, counts, cause);
    };
    upload_ =
        std::make_unique<ListUpload>(program_.scheduler, target, account, remarks, rows, errors_, std::move(listener));
    upload_->Start();
}

void ListUploads::ShowFrame(Target target, qsizetype rows)
{
    controls_.Frame5->setTitle(UploadTexts::FrameTitle(target));
    controls_.RichTextBox1->clear();
    controls_.ProgressBar1->setMaximum(int(rows));
    controls_.ProgressBar1->setValue(0);
    controls_.estado->clear();
    controls_.detener->setEnabled(true);
    controls_.Command7->setEnabled(false);
    controls_.Frame5->show();
    Write(UploadTexts::Connecting(target), ListUpload::Colour::Blue);
}

// Behind the last line, whatever the operator has marked; the list follows the work.
void ListUploads::Write(const QString &text, ListUpload::Colour colour)
{
    QTextCursor end(controls_.RichTextBox1->document());
    end.movePosition(QTextCursor::End);
    QTextCharFormat format;
    format.setForeground(ColourOf(colour));
    end.insertText(QString(text + u'\n'), format);
    QScrollBar *bar = controls_.RichTextBox1->verticalScrollBar();
    bar->setValue(bar->maximum());
}

void ListUploads::ShowProgress(const ListUpload::Counts &counts)
{
    controls_.ProgressBar1->setValue(int(counts.sent - counts.unanswered)); // answers
    QString text = u"%1 de %2"_qs.arg(counts.sent).arg(counts.total);
    if (counts.unanswered > 0)
        text += u"  ·  sin respuesta "_qs + QString::number(counts.unanswered);
    controls_.estado->setText(sending_.isEmpty() ? text : QString(text + u"  ·  " + sending_));
}

void ListUploads::Ended(Target target, ListUpload::End end, const ListUpload::Counts &counts, const QString &cause)
{
    run_.reset();
    if (end == ListUpload::End::Errors)
        program_.dialogs.Message(&window_, UploadTexts::ThreeErrors(target));
    controls_.Command7->setEnabled(true);
    controls_.detener->setEnabled(false);
    Write(UploadTexts::Closing(target, counts), ListUpload::Colour::Blue);
    Q_EMIT Working(false);
    if (const QString remainder = UploadTexts::Remainder(counts, cause); !remainder.isEmpty())
        program_.dialogs.Message(&window_, remainder, Dialogs::Icon::Information);
}
