// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "online/SyncLda.h"

#include "logging/QsoStore.h"
#include "online/WebText.h"

#include <QRegularExpression>

namespace {

struct Status {
    const char16_t *word;
    SyncRules::Judgement::Kind kind;
    const char16_t *text;
    const char16_t *newState;
};

using Kind = SyncRules::Judgement::Kind;

constexpr Status statuses[] = {
    {u"duplicado!N", Kind::Checked, u"Chequeado, aún no Confirmado!", u"1"},
    {u"duplicado!Y", Kind::Confirmed, u"Chequeado, Confirmado!", u"2"},
    {u"duplicado!S", Kind::Confirmed, u"Chequeado, Confirmado!", u"2"},
    {u"Guardado", Kind::Uploaded, u"Subido!", u"1"},
};

constexpr qsizetype echoedItems = 6;
constexpr qsizetype longestLine = 300; // of an error page nobody reads more

} // namespace

QString SyncRules::Address(const Account &account, const SyncQso &qso)
{
    return account.base + u"/php/tordillo3.php?user=" + account.user + u"&pass="
        + WebText::PercentEncode(account.password) + u"&micall=" + qso.micall + u"&sucall=" + qso.sucall + u"&banda="
        + qso.banda + u"&modo=" + qso.modo + u"&fecha=" + qso.fecha + u"&hora=" + qso.hora + u"&rst=" + qso.rst;
}

SyncRules::Judgement SyncRules::Judge(const QString &reply, bool believed, const SyncQso &qso)
{
    // Each blank counts: an item may be empty.
    const QString plain = reply.trimmed().replace(u'\n', u' ').remove(u'\r');
    if (plain.contains(u"Argentina"))
        return {Kind::Error, qso.sucall + u" No lo considera LdA", {}};
    if (plain.contains(u"LdA") || plain.contains(u"Contraseña"))
        return {Kind::Error, plain, {}};
    const QStringList items = plain.split(u' ');
    if (!believed || items.size() <= echoedItems)
        return {Kind::NotUnderstood, plain.isEmpty() ? u"(respuesta vacía)"_qs : plain, {}};
    const QString head = items[0] + u'>' + items[1] + u' ' + items[2] + u'/' + items[3] + u" >";
    const QString rest = items.mid(echoedItems).join(u' ');
    for (const Status &status : statuses)
        if (rest.contains(QStringView(status.word)))
            return {status.kind, head + QString::fromUtf16(status.text), QString::fromUtf16(status.newState)};
    return {Kind::NotUnderstood, head + rest, {}};
}

SyncLda::SyncLda(
    Scheduler &scheduler, LogStore &store, SyncRules::Account account, QList<SyncQso> qsos, Listener listener)
    : scheduler_(scheduler)
    , store_(store)
    , account_(std::move(account))
    , qsos_(std::move(qsos))
    , listener_(std::move(listener))
    , client_(scheduler)
    , Timer10_(scheduler.Make(2, [this] {
        Timer10_->Stop();
        SendNext();
    }))
{
    counts_.total = qsos_.size();
}

SyncLda::~SyncLda() = default;

void SyncLda::Start()
{
    running_ = true;
    SendNext();
}

void SyncLda::Cancel()
{
    counts_.unanswered = request_ != nullptr;
    Finish(End::Cancelled);
}

void SyncLda::SendNext()
{
    if (counts_.done == qsos_.size())
        return Finish(End::Complete);
    request_ = std::make_unique<PolledRequest>(client_, scheduler_, SyncRules::Address(account_, qsos_[counts_.done]),
        PolledRequest::Tick(), [this](const WebReply &reply) { Answered(reply); });
}

void SyncLda::Answered(const WebReply &reply)
{
    request_.reset();
    if (!reply.Answered()) {
        counts_.unanswered = 1;
        return Finish(End::NoConnection, reply.Cause());
    }
    const SyncQso &qso = qsos_[counts_.done++];
    const SyncRules::Judgement judged = SyncRules::Judge(WebText::PageText(reply.text), reply.IsGood(), qso);
    if (!judged.newState.isEmpty())
        Store(qso, judged.newState);
    switch (judged.kind) {
    case Kind::Error:
        ++counts_.errors;
        break;
    case Kind::Checked:
        ++counts_.checked;
        break;
    case Kind::Confirmed:
        ++counts_.confirmed;
        break;
    case Kind::Uploaded:
        ++counts_.uploaded;
        break;
    case Kind::NotUnderstood:
        ++counts_.notUnderstood;
        break;
    }
    listener_.listed(judged.kind,
        QString::number(counts_.done) + u' ' + WebText::WithoutSecret(judged.line, account_.password).left(longestLine),
        counts_);
    if (running_) // a box may have been open meanwhile
        Timer10_->Start();
}

void SyncLda::Store(const SyncQso &qso, const QString &state)
{
    const Result<void> stored = SetLdaState(store_, qso.id, state);
    if (stored)
        return;
    if (++counts_.notStored == 1)
        listener_.storeFailed(stored.failure());
}

void SyncLda::Finish(End end, const QString &cause)
{
    if (!std::exchange(running_, false))
        return;
    Timer10_->Stop();
    request_.reset();
    const auto ended = listener_.ended;
    ended(end, counts_, cause);
}

QString SyncRemainder(const SyncLda::Counts &counts)
{
    QStringList lines;
    if (const qsizetype unsent = counts.total - counts.done - counts.unanswered; unsent > 0)
        lines << u"Quedaron sin enviar %1 de %2 QSOs."_qs.arg(unsent).arg(counts.total);
    if (counts.unanswered > 0)
        lines << u"1 QSO fue enviado y quedó sin respuesta: sigue como estaba."_qs;
    if (counts.notUnderstood > 0)
        lines << u"%1 respuestas no se entendieron: esos QSOs siguen como estaban."_qs.arg(counts.notUnderstood);
    if (counts.notStored > 0)
        lines << u"El estado de %1 QSOs no se pudo guardar en el log."_qs.arg(counts.notStored);
    if (lines.isEmpty())
        return {};
    return u"En el log quedó el nuevo estado de %1 QSOs.\n"_qs.arg(counts.Standing()) + lines.join(u'\n');
}
