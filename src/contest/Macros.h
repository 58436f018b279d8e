// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"

#include <QString>
#include <array>

class Logbook;

// The seven messages of the contest window, kept in macros_concurso_3.cfg, and what their buttons say.
inline constexpr int macroCount = 7;
using MacroTexts = std::array<QString, macroCount>;

const MacroTexts &DefaultMacros();

// Merges the file into `macros`: a text whose key is absent stays. A missing file sets the defaults and is written. A
// failure, of that or of reading, leaves the defaults where there was nothing.
Result<void> LoadMacros(Logbook &logbook, MacroTexts &macros);

// Replaces the whole file.
Result<void> SaveMacros(Logbook &logbook, const MacroTexts &macros);

// What a macro is made of, besides its text.
struct MacroFields {
    QString ownCall, call, rse; // Text2, Corresponsal, RSE
    QString serieType; // SerieType
    bool cutNumbers = false; // Check5: "0" goes as T and "9" as N, in serial and report only
    QString savedCall, savedSerie; // to whom the exchange was last sent, and with which serial
};

// The messages by the numbers of their keys; the eighth is the exchange of a Run contact, which always begins with the
// call.
enum Macro { MacroCq, MacroSerie, MacroTu, MacroOwnCall, MacroHisCall, MacroAgain, MacroNr, MacroExchange };

// The text that goes to the keyer. Only the variables that belong to a message are replaced in it. The own call stays
// in the first macro once it has been sent: until the macros are read again it does not follow the field any more.
QString MacroMessage(MacroTexts &macros, int macro, const MacroFields &fields);

// The serial as it is sent: in an incremental contest "00" before one digit and "0" before more, also before three.
QString SentSerial(const QString &rse, const QString &serieType);

// The exchange once more: call, report and serial with blanks between them.
QString ExchangeAgain(const QString &call, const QString &serial, bool cutNumbers);

// What Enter sends when it carries the whole contact.
struct EsmStep {
    enum class Focus { Stays, Call, Exchange };

    enum class Sends { Nothing, Message, ExchangeAgain };

    Sends sends = Sends::Nothing;
    int macro = MacroCq;
    bool savesExchange = false; // call and serial are those that were last sent
    bool stopsAutoCq = false;
    Focus focus = Focus::Stays;

    bool operator==(const EsmStep &) const = default;
};
// `run`: calling, else searching. `saved`: call and serial of the last exchange are both known.
EsmStep StepOfEnter(bool run, bool hasCall, bool hasExchange, bool saved);

// The captions of the buttons, from F1 to F7. The fourth names the own call. The fifth names the call that is being
// typed where the serial to be sent is empty.
std::array<QString, macroCount> MacroCaptions(const QString &ownCall, const QString &call, const QString &rse);
