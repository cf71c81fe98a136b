#include "midi_notes.h"

#include <algorithm>
#include <deque>
#include <map>

namespace zelmar::testing_support {

namespace {

// Reads big-endian numbers; behind the end all bytes are 0 and Ok() turns false.
class Bytes {
 public:
  explicit Bytes(const QByteArray& bytes) : bytes_(bytes) {}
  int Byte() {
    if (place_ >= bytes_.size()) {
      ok_ = false;
      return 0;
    }
    return static_cast<unsigned char>(bytes_[place_++]);
  }
  int Number(int bytes) {
    int number = 0;
    while (bytes-- > 0) number = (number << 8) | Byte();
    return number;
  }
  int Variable() {
    int number = 0, byte = 0;
    do {
      byte = Byte();
      number = (number << 7) | (byte & 127);
    } while ((byte & 128) != 0 && ok_);
    return number;
  }
  QByteArray Text(qsizetype length) {
    const QByteArray text = bytes_.mid(place_, length);
    ok_ = ok_ && length >= 0 && text.size() == length;
    place_ += text.size();
    return text;
  }
  bool AtEnd() const { return place_ >= bytes_.size(); }
  bool Ok() const { return ok_; }

 private:
  QByteArray bytes_;
  qsizetype place_ = 0;
  bool ok_ = true;
};

bool ReadTrack(Bytes track, MidiNotes& notes) {
  std::vector<MidiNote> found;
  std::vector<MidiControl> controls;
  std::map<std::pair<int, int>, std::deque<std::size_t>> sounding;  // by channel and number
  int time = 0, status = 0;
  while (!track.AtEnd() && track.Ok()) {
    time += track.Variable();
    int first = track.Byte();
    if (first >= 128) {
      status = first;
      first = -1;
    }
    if (status == 0xFF) {
      const int type = track.Byte();
      const QByteArray data = track.Text(track.Variable());
      if (type == 0x51 && data.size() == 3) notes.tempos.push_back({time, Bytes(data).Number(3)});
      continue;
    }
    if (status == 0xF0 || status == 0xF7) {
      track.Text(track.Variable());
      continue;
    }
    if (first < 0) first = track.Byte();
    const int kind = status >> 4;
    const int second = kind == 0xC || kind == 0xD ? 0 : track.Byte();
    const auto key = std::make_pair(status & 15, first);
    if (kind == 9 && second > 0) {
      sounding[key].push_back(found.size());
      found.push_back({first, time, -1});
    } else if (kind == 8 || kind == 9) {
      if (sounding[key].empty()) return false;
      found[sounding[key].front()].end = time;
      sounding[key].pop_front();
    } else if (kind == 0xB || kind == 0xC || kind == 0xE) {
      controls.push_back({static_cast<MidiControl::Kind>(kind), time, first, second});
    }
  }
  for (const MidiNote& note : found)
    if (note.end < 0) return false;
  std::ranges::sort(found, {},
                    [](const MidiNote& note) { return std::tuple(note.start, note.number, note.end); });
  if (!found.empty()) {
    notes.tracks.push_back(found);
    notes.controls.push_back(controls);
  }
  return track.Ok();
}

}  // namespace

MidiNotes ReadMidiNotes(const QByteArray& file) {
  MidiNotes notes;
  Bytes bytes(file);
  if (bytes.Text(4) != "MThd" || bytes.Number(4) != 6) {
    notes.mistake = QStringLiteral("no MIDI file");
    return notes;
  }
  bytes.Number(2);
  const int tracks = bytes.Number(2);
  notes.division = bytes.Number(2);
  for (int i = 0; i < tracks; ++i) {
    const bool is_track = bytes.Text(4) == "MTrk";
    if (!is_track || !ReadTrack(Bytes(bytes.Text(bytes.Number(4))), notes))
      notes.mistake = QStringLiteral("track %1 cannot be read").arg(i);
  }
  if (!bytes.Ok()) notes.mistake = QStringLiteral("the file ends too soon");
  return notes;
}

}  // namespace zelmar::testing_support
