// A model as SECS messages in SML, as a host would send and receive them: the reports defined
// (S2F33), linked to their events (S2F35), the events enabled that are marked so (S2F37), the
// alarms that are (S5F3, one each), and for every event one S6F11 with the values that the model
// holds now.
//
// No message is written that would say more than it should: with an empty list S2F33 and S2F35
// erase everything and S2F37 means all events, so they are left out where there is nothing to say.
#pragma once

#include "model/core/sink.h"
#include "model/publish/catalogue.h"

namespace stelvan::model {

/// Each message begins with "SnFm" (and W, since all of them are answered) at the start of a line,
/// and ends with ">." at the end of one; no text spans lines. Identifiers are U4. Texts are quoted
/// runs of printable ASCII, everything else in them the bytes of UTF-8 as 0xNN.
/// Adds to `notes` what was left out or empty. Throws what `sink` throws.
void writeSml(const Catalogue& catalogue, const CrossReference& references, const Sink& sink,
              Notes& notes);

}  // namespace stelvan::model
