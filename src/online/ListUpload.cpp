// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "online/ListUpload.h"

#include "online/WebText.h"

namespace {

constexpr int answerMilliseconds = 5000;
constexpr qsizetype shownAddress = 75; // ends before the password, whatever the contact
constexpr qsizetype shownReply = 2000;

QString NameOf(ListUpload::Target target) { return target == ListUpload::Target::Lda ? u"LdA"_qs : u"eQSL"_qs; }

} // namespace

ListUpload::ListUpload(Scheduler &scheduler, Target target, UploadRules::Account account, bool remarksAsQslMessage,
    qsizetype rows, Errors &errors, Listener listener)
    : target_(target)
    , account_(std::move(account))
    , remarksAsQslMessage_(remarksAsQslMessage)
    , errors_(errors)
    , listener_(std::move(listener))
    , client_(scheduler)
{
    counts_.total = rows;
}

ListUpload::~ListUpload() = default;

void ListUpload::Start()
{
    running_ = true;
    SendNext();
}

void ListUpload::Cancel()
{
    counts_.unanswered += request_ != nullptr;
    Finish(End::Cancelled);
}

QString ListUpload::NextAddress(const QStringList &row)
{
    if (target_ == Target::Lda)
        return UploadRules::LdaAddress(account_, row, band_.OfLda(row), remarksAsQslMessage_);
    const QString address =
        UploadRules::EqslAddress(account_, UploadRules::EqslDocument(row, band_.Of(row), remarksAsQslMessage_));
    listener_.write(address.left(shownAddress) + u" ...", Colour::Blue);
    return address;
}

void ListUpload::SendNext()
{
    std::optional<QStringList> row;
    while (!row && place_ < std::min(counts_.total, mostSent))
        row = listener_.row(place_++);
    if (!row)
        return Finish(End::Complete);
    ++counts_.sent;
    request_ = client_.Get(NextAddress(*row), {answerMilliseconds, WebClient::longestReply},
        [this](const WebReply &reply) { Answered(reply); });
}

void ListUpload::Answered(const WebReply &reply)
{
    request_.reset();
    if (reply.Answered())
        Use(WebText::PageText(reply.text));
    else
        ++counts_.unanswered;
    if (!reply.Cause().isEmpty())
        cause_ = reply.Cause();
    listener_.progress(counts_);
    int &errors = target_ == Target::Lda ? errors_.lda : errors_.eqsl;
    if (errors >= mostErrors) {
        errors = 0;
        Finish(End::Errors);
    } else if (refused_) {
        Finish(End::Refused);
    } else {
        SendNext();
    }
}

void ListUpload::Use(const QString &page)
{
    const UploadRules::Effects effects = UploadRules::Judge(page);
    const bool lda = target_ == Target::Lda;
    refused_ = refused_ || effects.stop;
    errors_.lda += effects.ldaErrors;
    errors_.eqsl += effects.eqslError;
    counts_.loaded += lda ? effects.ldaLoaded : effects.eqslLoaded;
    counts_.duplicates += lda ? effects.ldaDuplicate : effects.eqslDuplicate;
    listener_.write(
        WebText::WithoutSecret(page, account_.password).left(shownReply), effects.red ? Colour::Red : Colour::Green);
}

void ListUpload::Finish(End end)
{
    if (!std::exchange(running_, false))
        return;
    request_.reset();
    const auto ended = listener_.ended;
    ended(end, counts_, cause_);
}

namespace UploadTexts {

QString FrameTitle(ListUpload::Target target)
{
    return target == ListUpload::Target::Lda ? u"Respuesta de Log de Argentina ..."_qs
                                             : u"Respuesta de Log eQSL ..."_qs;
}

QString Connecting(ListUpload::Target target)
{
    const QString text = u"Conectando con "_qs + NameOf(target) + u" ...";
    return target == ListUpload::Target::Lda ? text : QString(text + u'\n' + QString(26, u'-'));
}

QString ThreeErrors(ListUpload::Target target)
{
    return u"Se prdujeron 3 Errores en la subida a "_qs + NameOf(target) + u" \nreviste los parámetros";
}

QString Closing(ListUpload::Target target, const ListUpload::Counts &counts)
{
    const QString line(28, u'-');
    return QStringList{line, u"QSOs   Cargados: "_qs + QString::number(counts.loaded),
        u"QSOs Duplicados: "_qs + QString::number(counts.duplicates),
        QString(u"Desconectado de "_qs + NameOf(target) + u'.'), line}
        .join(u'\n');
}

QString Remainder(const ListUpload::Counts &counts, const QString &cause)
{
    QStringList lines;
    if (counts.sent < counts.total)
        lines << u"Quedaron sin enviar %1 de %2 QSOs."_qs.arg(counts.total - counts.sent).arg(counts.total);
    if (counts.unanswered > 0)
        lines << u"%1 QSOs no tuvieron respuesta."_qs.arg(counts.unanswered);
    if (lines.isEmpty())
        return {};
    if (!cause.isEmpty())
        lines << cause;
    return u"Cargados: %1, duplicados: %2.\n"_qs.arg(counts.loaded).arg(counts.duplicates) + lines.join(u'\n');
}

} // namespace UploadTexts
