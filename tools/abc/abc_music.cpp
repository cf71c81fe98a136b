#include "abc/abc_music.h"

#include <algorithm>

namespace zelmar {

namespace {

[[noreturn]] void Fail(TextPosition position, const QString& sentence) {
  throw TextError(position, sentence);
}

constexpr std::size_t kMostItems = 100000;
constexpr std::size_t kMostVoices = 15;

// Steps of loudness above mezzo-forte.
struct Dynamic {
  const char16_t* mark;
  int steps;
};

constexpr Dynamic kDynamics[] = {{u"pppp", -60}, {u"ppp", -60}, {u"pp", -45}, {u"p", -30},  {u"mp", -15},
                                 {u"mf", 0},     {u"f", 15},    {u"ff", 30},  {u"fff", 45}, {u"ffff", 45}};

constexpr QStringView kJumps[] = {u"D.C.",       u"D.S.",       u"dacapo",     u"dacoda",
                                  u"D.C.alfine", u"D.C.alcoda", u"D.S.alfine", u"D.S.alcoda",
                                  u"fine",       u"coda",       u"segno"};

// Letters that stand for a decoration without sound of its own.
constexpr QStringView kDecorationLetters = u"~.HLMPTuv";

}  // namespace

AbcMusic::AbcMusic(const AbcMetre& metre, const Fraction& unit_length, const AbcKey& key,
                   AccidentalReach reach)
    : metre_(metre), unit_length_(unit_length), key_(key), reach_(reach) {}

std::size_t AbcMusic::VoiceIndex(const QString& id, TextPosition position) {
  for (std::size_t i = 0; i < voices_.size(); ++i)
    if (voices_[i].track.id == id) return i;
  if (voices_.size() >= kMostVoices) Fail(position, QStringLiteral("A tune has at most 15 voices."));
  AbcVoice& voice = voices_.emplace_back();
  voice.position = position;
  voice.track.id = voice.track.name = id;
  voice.track.number = static_cast<int>(voices_.size());
  // The tenth channel is that of the drums.
  voice.track.channel = voice.track.number < 10 ? voice.track.number : voice.track.number + 1;
  State& state = states_.emplace_back();
  state.unit_length = unit_length_;
  state.key = key_;
  return voices_.size() - 1;
}

std::size_t AbcMusic::DeclareVoice(AbcCursor& cursor) {
  cursor.SkipBlanks();
  const TextPosition start = cursor.Position();
  const QString id = cursor.TakeWord();
  if (id.isEmpty()) Fail(start, QStringLiteral("A voice needs a name."));
  const std::size_t index = VoiceIndex(id, start);
  AbcVoice& voice = voices_[index];
  while (true) {
    cursor.SkipBlanks();
    if (cursor.AtEnd()) return index;
    const TextPosition position = cursor.Position();
    QString word;
    while (!cursor.AtEnd() && !cursor.Peek().isSpace() && cursor.Peek() != u'"') word += cursor.Take();
    QString text;
    if (cursor.TakeIf(u'"')) {
      text = cursor.TakeUntil(u'"');
      if (text.isNull()) Fail(position, QStringLiteral("The quotation mark is never closed."));
    }
    if (word == QStringLiteral("name=") || word == QStringLiteral("nm="))
      voice.track.name = text;
    else if (!PassClefWord(word, position))
      Fail(position, QStringLiteral("\"%1\" is no property of a voice.").arg(word));
  }
}

void AbcMusic::SelectVoice(AbcCursor& cursor) {
  current_ = DeclareVoice(cursor);
  StartWordsHere();
}

void AbcMusic::StartWordsHere() {
  CurrentState().line_start = CurrentVoice().items.size();
  CurrentState().verse = 0;
}

AbcVoice& AbcMusic::CurrentVoice() {
  if (!current_) {
    if (voices_.empty()) voices_[VoiceIndex(QStringLiteral("1"), {})].track.name = QStringLiteral("Melody");
    current_ = 0;
  }
  return voices_[*current_];
}

AbcMusic::State& AbcMusic::CurrentState() {
  CurrentVoice();
  return states_[*current_];
}

AbcItem& AbcMusic::AddItem(AbcItemKind kind, TextPosition position) {
  EnterPart();
  AbcVoice& voice = CurrentVoice();
  if (voice.items.size() >= kMostItems) Fail(position, QStringLiteral("This voice is too long."));
  AbcItem& item = voice.items.emplace_back();
  item.kind = kind;
  item.position = position;
  return item;
}

// A label stands before the first thing that its part holds in each voice.
void AbcMusic::EnterPart() {
  State& state = CurrentState();
  if (state.part == part_.letter) return;
  state.part = part_.letter;
  AbcItem& label = CurrentVoice().items.emplace_back();
  label.kind = AbcItemKind::kPart;
  label.position = part_.position;
  label.value = part_.letter;
}

void AbcMusic::ReadLine(AbcCursor& cursor) {
  State& state = CurrentState();
  if (!state.line_goes_on) StartWordsHere();
  state.line_goes_on = false;
  while (!cursor.AtEnd()) ReadElement(cursor);
}

void AbcMusic::ReadElement(AbcCursor& cursor) {
  const QChar c = cursor.Peek();
  const TextPosition position = cursor.Position();
  if (c.isSpace() || c == u'`' || c == u'$' || c == u')') {
    cursor.Take();
  } else if (c == u'\\') {
    cursor.Take();
    cursor.SkipBlanks();
    if (!cursor.AtEnd())
      Fail(position, QStringLiteral("A backslash stands only at the end of a line that goes on."));
    CurrentState().line_goes_on = true;
  } else if (c == u'|' || c == u':' || (c == u'.' && cursor.Peek(1) == u'|')) {
    if (c == u'.') cursor.Take();
    ReadBarLine(cursor);
  } else if (c == u'[') {
    ReadBracket(cursor);
  } else if (c == u'^' || c == u'_' || c == u'=' || LetterIndex(c) >= 0) {
    ReadNote(cursor);
  } else if (c == u'z' || c == u'x' || c == u'Z' || c == u'X') {
    ReadRest(cursor);
  } else if (c == u'(' || (c == u'.' && cursor.Peek(1) == u'(')) {
    if (c == u'.') cursor.Take();
    ReadParenthesis(cursor);
  } else if (c == u'-' || (c == u'.' && cursor.Peek(1) == u'-')) {
    if (c == u'.') cursor.Take();
    ReadTie(cursor);
  } else if (c == u'>' || c == u'<') {
    ReadBroken(cursor);
  } else if (c == u'!') {
    ReadDecoration(cursor);
  } else if (c == u'"') {
    cursor.Take();
    if (cursor.TakeUntil(u'"').isNull())
      Fail(position, QStringLiteral("The quotation mark is never closed."));
  } else if (c == u'{') {
    cursor.Take();
    if (cursor.TakeUntil(u'}').isNull())
      Fail(position, QStringLiteral("The braces of the grace notes are never closed."));
  } else if (c == u'y') {
    cursor.Take();
    ReadLength(cursor);
  } else if (c == u'&') {
    Fail(position, QStringLiteral("Voice overlays are not supported; give the line a voice of its own."));
  } else if (c == u'S' || c == u'O') {
    Fail(position, QStringLiteral("Jumps are not supported; write the music out."));
  } else if (kDecorationLetters.contains(c)) {
    cursor.Take();
  } else {
    Fail(position, QStringLiteral("The character \"%1\" means nothing here.").arg(c));
  }
}

void AbcMusic::AddTimed(AbcItem item) {
  State& state = CurrentState();
  Fraction factor(1);
  if (state.broken) factor = factor * *state.broken;
  state.broken.reset();
  if (state.tuplet.left > 0) {
    factor = factor * state.tuplet.factor;
    --state.tuplet.left;
  }
  item.duration = item.duration * factor;
  for (AbcNote& note : item.notes) note.duration = note.duration * factor;
  AddItem(AbcItemKind::kSound, item.position) = std::move(item);
  CarryTies();
}

void AbcMusic::CarryTies() {
  State& state = CurrentState();
  state.tied_accidentals.clear();
  for (const AbcNote& note : CurrentVoice().items.back().notes)
    if (note.tied) state.tied_accidentals[{note.letter, note.octave}] = note.alteration;
}

Fraction AbcMusic::ReadLength(AbcCursor& cursor) {
  const TextPosition start = cursor.Position();
  Fraction length(1);
  if (cursor.AtDigit()) length = Fraction(cursor.TakeNumber());
  int denominator = 1;
  bool has_slash = false;
  while (cursor.Peek() == u'/') {
    cursor.Take();
    has_slash = true;
    denominator *= cursor.AtDigit() ? cursor.TakeNumber() : 2;
    if (denominator < 1 || denominator > 512) break;
  }
  if (length.Numerator() == 0) Fail(start, QStringLiteral("A length cannot be 0."));
  if (has_slash && (denominator < 1 || denominator > 512 || (denominator & (denominator - 1)) != 0))
    Fail(start, QStringLiteral("A length is divided by a power of two up to 512."));
  return length * Fraction(1, denominator);
}

AbcNote AbcMusic::ReadPitch(AbcCursor& cursor) {
  State& state = CurrentState();
  AbcNote note;
  note.position = cursor.Position();
  std::optional<int> accidental;
  if (cursor.TakeIf(u'^'))
    accidental = cursor.TakeIf(u'^') ? 2 : 1;
  else if (cursor.TakeIf(u'_'))
    accidental = cursor.TakeIf(u'_') ? -2 : -1;
  else if (cursor.TakeIf(u'='))
    accidental = 0;
  const QChar letter = cursor.Peek();
  const int index = LetterIndex(letter);
  if (index < 0) Fail(cursor.Position(), QStringLiteral("A note from A to G is missing here."));
  cursor.Take();
  int octave = letter.isUpper() ? 4 : 5;
  while (cursor.Peek() == u'\'' || cursor.Peek() == u',') octave += cursor.Take() == u'\'' ? 1 : -1;

  // An accidental in its bar counts first, then one that a tie carries over the bar line, then the key.
  const auto place = std::make_pair(index, reach_ == AccidentalReach::kAllOctaves ? 0 : octave);
  int alteration = state.key.accidentals[static_cast<std::size_t>(index)];
  if (accidental) {
    alteration = *accidental;
    if (reach_ != AccidentalReach::kNote) state.bar_accidentals[place] = alteration;
  } else if (const auto written = state.bar_accidentals.find(place); written != state.bar_accidentals.end()) {
    alteration = written->second;
  } else if (const auto tied = state.tied_accidentals.find({index, octave});
             tied != state.tied_accidentals.end()) {
    alteration = tied->second;
  }

  note.letter = index;
  note.octave = octave;
  note.alteration = alteration;
  static constexpr int semitones[] = {0, 2, 4, 5, 7, 9, 11};
  note.number = 12 * (octave + 1) + semitones[index] + alteration;
  if (octave < -9 || octave > 19 || note.number < 12 || note.number > 127)
    Fail(note.position, QStringLiteral("This note lies outside the range from C0 to G9."));
  // The model spells each pitch class in one way by itself; a mark asks for the other.
  static constexpr QStringView sharp_by_itself = u"CF", flat_by_itself = u"EAB";
  const QChar upper = letter.toUpper();
  if (alteration == 1 && !sharp_by_itself.contains(upper)) note.enharmonic = QStringLiteral("#");
  if (alteration == -1 && !flat_by_itself.contains(upper)) note.enharmonic = QStringLiteral("b");
  return note;
}

void AbcMusic::ReadNote(AbcCursor& cursor) {
  AbcItem item;
  item.position = cursor.Position();
  AbcNote note = ReadPitch(cursor);
  item.duration = note.duration = ReadLength(cursor) * CurrentState().unit_length;
  item.notes.push_back(note);
  AddTimed(std::move(item));
}

void AbcMusic::ReadChord(AbcCursor& cursor) {
  AbcItem item;
  item.position = cursor.Position();
  cursor.Take();
  while (true) {
    cursor.SkipBlanks();
    if (cursor.AtEnd()) Fail(item.position, QStringLiteral("The bracket of the chord is never closed."));
    if (cursor.TakeIf(u']')) break;
    if (cursor.Peek() == u'!') {
      ReadDecoration(cursor);
      continue;
    }
    if (cursor.Peek() == u'"') {
      const TextPosition position = cursor.Position();
      cursor.Take();
      if (cursor.TakeUntil(u'"').isNull())
        Fail(position, QStringLiteral("The quotation mark is never closed."));
      continue;
    }
    AbcNote note = ReadPitch(cursor);
    note.duration = ReadLength(cursor) * CurrentState().unit_length;
    note.tied = cursor.TakeIf(u'-');
    item.notes.push_back(note);
    if (item.notes.size() > 64) Fail(note.position, QStringLiteral("A chord has at most 64 notes."));
  }
  if (item.notes.empty()) Fail(item.position, QStringLiteral("This chord has no notes."));
  const Fraction factor = ReadLength(cursor);
  for (AbcNote& note : item.notes) note.duration = note.duration * factor;
  item.duration = item.notes.front().duration;
  AddTimed(std::move(item));
}

void AbcMusic::ReadRest(AbcCursor& cursor) {
  const TextPosition position = cursor.Position();
  const QChar letter = cursor.Take();
  if (letter.isLower()) {
    AbcItem item;
    item.position = position;
    item.duration = ReadLength(cursor) * CurrentState().unit_length;
    AddTimed(std::move(item));
    return;
  }
  const int bars = cursor.AtDigit() ? cursor.TakeNumber() : 1;
  if (bars < 1 || bars > 9999) Fail(position, QStringLiteral("A rest lasts 1 to 9999 bars."));
  AddItem(AbcItemKind::kBarRest, position).duration = metre_.BarCrotchets() * Fraction(bars);
}

void AbcMusic::ReadParenthesis(AbcCursor& cursor) {
  const TextPosition position = cursor.Position();
  cursor.Take();
  if (!cursor.AtDigit()) return;  // a slur
  State& state = CurrentState();
  const QString sentence = QStringLiteral("A tuplet is (p, (p:q or (p:q:r with p from 2 to 9.");
  if (state.tuplet.left > 0) Fail(position, QStringLiteral("Tuplets within tuplets are not supported."));
  const int p = cursor.TakeNumber();
  if (p < 2 || p > 9) Fail(position, sentence);
  const bool compound = metre_.beats % 3 == 0 && metre_.beats > 3;
  int q = 0, r = 0;
  if (cursor.TakeIf(u':')) {
    if (cursor.AtDigit()) q = cursor.TakeNumber();
    if (cursor.TakeIf(u':') && cursor.AtDigit()) r = cursor.TakeNumber();
  }
  if (q == 0) q = p == 3 || p == 6 ? 2 : p == 2 || p == 4 || p == 8 ? 3 : compound ? 3 : 2;
  if (r == 0) r = p;
  if (q > 64 || r > 64) Fail(position, sentence);
  state.tuplet = {Fraction(q, p), r, position};
}

void AbcMusic::ReadBroken(AbcCursor& cursor) {
  const TextPosition position = cursor.Position();
  const QChar sign = cursor.Take();
  int count = 1;
  while (cursor.TakeIf(sign)) ++count;
  AbcVoice& voice = CurrentVoice();
  if (count > 3 || CurrentState().broken || voice.items.empty() ||
      voice.items.back().kind != AbcItemKind::kSound)
    Fail(position, QStringLiteral("A broken rhythm stands between two notes, with at most three signs."));
  const Fraction small(1, 1 << count);
  const Fraction large = Fraction(2) - small;
  const Fraction before = sign == u'>' ? large : small;
  AbcItem& item = voice.items.back();
  item.duration = item.duration * before;
  for (AbcNote& note : item.notes) note.duration = note.duration * before;
  CurrentState().broken = sign == u'>' ? small : large;
  CurrentState().broken_position = position;
}

void AbcMusic::ReadTie(AbcCursor& cursor) {
  const TextPosition position = cursor.Position();
  cursor.Take();
  AbcVoice& voice = CurrentVoice();
  if (voice.items.empty() || voice.items.back().kind != AbcItemKind::kSound ||
      voice.items.back().notes.empty())
    Fail(position, QStringLiteral("A tie stands directly behind a note."));
  for (AbcNote& note : voice.items.back().notes) note.tied = true;
  CarryTies();
}

void AbcMusic::ReadDecoration(AbcCursor& cursor) {
  const TextPosition position = cursor.Position();
  cursor.Take();
  const QString name = cursor.TakeUntil(u'!');
  if (name.isNull()) Fail(position, QStringLiteral("The exclamation mark is never closed."));
  if (std::ranges::find(kJumps, QStringView(name)) != std::end(kJumps))
    Fail(position, QStringLiteral("Jumps are not supported; write the music out."));
  for (const Dynamic& dynamic : kDynamics)
    if (name == QStringView(dynamic.mark)) AddItem(AbcItemKind::kLoudness, position).value = dynamic.steps;
}

void AbcMusic::Finish() const {
  for (const State& state : states_) {
    if (state.broken) Fail(state.broken_position, QStringLiteral("The broken rhythm has no note behind it."));
    if (state.tuplet.left > 0) Fail(state.tuplet.position, QStringLiteral("The tuplet has too few notes."));
  }
}

}  // namespace zelmar
