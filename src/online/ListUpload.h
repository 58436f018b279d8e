// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "online/UploadRules.h"
#include "online/WebClient.h"

#include <QList>
#include <functional>
#include <memory>
#include <optional>

// Sends listed rows to LdA or eQSL, one request each, in list order. A row that is not answered in 5 seconds counts for
// nothing, and the next one goes out. Works from the event loop; destroying it stops it.
class ListUpload {
public:
    enum class Target { Lda, Eqsl };
    static constexpr qsizetype mostSent = 2000; // in one run
    static constexpr qsizetype manyRows = 50; // above this the operator is warned
    static constexpr int mostErrors = 3;

    // Errors of all runs since the start of the program. A run that has reached three clears its own count, so those of
    // an earlier run count too; an error of eQSL counts for LdA as well.
    struct Errors {
        int lda = 0, eqsl = 0;
    };
    struct Counts {
        qsizetype total = 0; // rows of the list
        qsizetype sent = 0, unanswered = 0;
        qsizetype loaded = 0, duplicates = 0;
    };
    enum class End { Complete, Errors, Refused, Cancelled };

    enum class Colour { Green, Red, Blue };
    struct Listener {
        // The texts of a row by its place; nothing for one that has gone meanwhile.
        std::function<std::optional<QStringList>(qsizetype place)> row;
        std::function<void(const QString &text, Colour colour)> write; // a line for the operator
        std::function<void(const Counts &counts)> progress;
        std::function<void(End end, const Counts &counts, const QString &cause)> ended; // may destroy the run
    };

    ListUpload(Scheduler &scheduler, Target target, UploadRules::Account account, bool remarksAsQslMessage,
        qsizetype rows, Errors &errors, Listener listener);
    ~ListUpload();

    void Start();
    // Ends the run at once.
    void Cancel();

private:
    QString NextAddress(const QStringList &row);
    void SendNext();
    void Answered(const WebReply &reply);
    void Use(const QString &page);
    void Finish(End end);

    Target target_;
    UploadRules::Account account_;
    bool remarksAsQslMessage_;
    Errors &errors_;
    Listener listener_;
    Counts counts_;
    qsizetype place_ = 0;
    bool refused_ = false, running_ = false;
    QString cause_; // why answers were not used
    UploadRules::UploadBand band_;
    WebClient client_;
    std::unique_ptr<WebRequest> request_;
};

// The texts of the window, where the two services differ only by their names.
namespace UploadTexts {
inline const QString noAccount = u"Sin configurar Usuario o Contraseña!"_qs;
inline const QString manyRows = u"Más de 50 QSOs para subir!\npuede que domore mucho tiempo, prosigue o Cancela?\n\n"
                                "SUGERENCIA: Filre por fecha para subilos en etapas"_qs;
inline const QString askRemarks = u"Desea usar el campo COMMENT como QSLMSG?"_qs;
inline const QString noRows = u"No hay QSOs para exportar!"_qs;
QString FrameTitle(ListUpload::Target target);
QString Connecting(ListUpload::Target target);
QString ThreeErrors(ListUpload::Target target);
// What a run ends with: counts between two lines.
QString Closing(ListUpload::Target target, const ListUpload::Counts &counts);
// What is told in a box of its own when not all rows were answered; empty when they were.
QString Remainder(const ListUpload::Counts &counts, const QString &cause);
} // namespace UploadTexts
