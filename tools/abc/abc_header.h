// The header of a tune: its fields, and the lines of the catalogue that ABC has no field for.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "abc/abc_cursor.h"
#include "abc/abc_fields.h"
#include "abc/abc_music.h"
#include "abc/abc_parts.h"
#include "abc/abc_tune.h"

namespace zelmar {

class AbcHeader {
 public:
  // Reads a field whose cursor stands at its value. True when it was K:, which ends the header.
  bool ReadField(QChar letter, TextPosition field, AbcCursor& cursor);
  // Reads what stands behind "%%". Lines of other programs are passed over.
  void ReadDirective(AbcCursor& cursor);
  // Whether the line is one of the catalogue's.
  static bool IsCatalogueLine(QStringView directive) { return directive.startsWith(u"zelmar-"); }

  // The music that follows, with the voices that the header declares. Throws when a field is missing; `end`
  // is where the header ends.
  AbcMusic StartMusic(TextPosition end) const;
  // What the header says of the tune; all but the tempo, the voices and the themes' bars is settled by it.
  void Describe(AbcTune& tune) const;
  // Gives the voices their instruments, banks, channels and volumes.
  void EquipVoices(std::deque<AbcVoice>& voices) const;
  // Adds the themes. The tune's bars and tracks are known by now.
  void AddThemes(AbcTune& tune) const;

  const AbcMetre& Metre() const { return *metre_; }
  // In which the parts of the tune are played; empty when they are played as they are written.
  const AbcPlayOrder& Order() const { return order_; }

 private:
  struct Line {
    QString text;
    TextPosition position;
  };
  struct Equipment {
    QString voice;
    TextPosition position;
    std::optional<int> instrument, channel, volume, bank_msb, bank_lsb;
  };
  struct PlacedTheme {
    AbcTheme theme;
    TextPosition position;
  };

  void ReadVoiceLine(AbcCursor& cursor);
  void ReadThemeLine(AbcCursor& cursor);
  Fraction UnitLength() const;

  AbcCatalogue catalogue_;
  bool has_title_ = false;
  std::optional<AbcMetre> metre_;
  std::optional<Fraction> unit_length_;
  std::optional<Line> tempo_;
  AbcKey key_;
  AbcPlayOrder order_;
  std::vector<Line> voices_;
  std::vector<Equipment> equipment_;
  std::vector<PlacedTheme> themes_;
  int melody_track_ = 1;
  TextPosition melody_track_position_;
  AccidentalReach reach_ = AccidentalReach::kAllOctaves;
};

}  // namespace zelmar
