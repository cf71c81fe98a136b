// Writes a tune to the database: its row of the catalogue, its words, themes and tracks, and the event table
// that bears its name, in that order.
//
// Every row is committed by itself, so that what a crash or a full disk leaves behind is the first part of
// what was to be written; other tunes are never touched. What can be seen to go wrong (a name that no
// statement can hold, a missing table, a table of that name that holds no events) ends the save before its
// first row.
#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace zelmar {

class Tune;
struct SaveProgress;

// What a save writes. The themes go with each.
enum class SavePortion { kAll, kInfo, kWords, kTracks, kNotes, kThemes };

// The portion of the words "ALL", "Info", "Words", "Tracks" and "Notes"; any other word stands for the themes
// alone.
SavePortion SavePortionOf(const QString& word);

// Saves `tune` under `code_name`, which becomes its FileName whatever follows. Serves events as it goes.
//
// `failed` is set when the user does not want it, when there is no database, which the user has then been
// told, and when the event table cannot be opened; `progress`, where given, tells how far it came. A save of
// a portion whose tune was never saved tells so, writes nothing and leaves `failed` False. Throws Failure (or
// DatabaseError) for anything else that goes wrong; its description tells what was written and what is no
// longer whole. In all these cases a changed tune stays marked as changed; an unchanged one becomes so when
// the database is left with a part of it. A tune that is changed while events are served stays changed.
// A caller that will undo changes of its own after a failure gives `counts_as_changed`, which tells for that
// description whether the tune counts as changed then.
//
// A save that begins while another of the same event table serves events takes its place: that one ends when
// it gets its turn again.
void SaveTune(const std::shared_ptr<Tune>& tune, const QString& code_name, bool& failed, SavePortion portion,
              SaveProgress* progress = nullptr, const std::function<bool()>& counts_as_changed = {});

}  // namespace zelmar
