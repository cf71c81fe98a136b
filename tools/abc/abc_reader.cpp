#include "abc/abc_reader.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>
#include <algorithm>
#include <optional>

#include "abc/abc_header.h"
#include "abc/abc_midi.h"
#include "abc/abc_music.h"
#include "abc/abc_timing.h"

namespace zelmar {

namespace {

[[noreturn]] void Fail(TextPosition position, const QString& sentence) {
  throw TextError(position, sentence);
}

constexpr qsizetype kMostBytes = 4'000'000;

QString Decoded(const QByteArray& text) {
  if (text.size() > kMostBytes) Fail({}, QStringLiteral("The text is longer than four million bytes."));
  QStringDecoder decoder(QStringDecoder::Utf8);
  const QString decoded = decoder(text);
  if (!decoder.hasError()) return decoded;
  const qsizetype bad = decoded.indexOf(QChar::ReplacementCharacter);
  const QStringView before = QStringView(decoded).first(bad < 0 ? decoded.size() : bad);
  Fail({static_cast<int>(before.count(u'\n')) + 1,
        static_cast<int>(before.size() - before.lastIndexOf(u'\n'))},
       QStringLiteral("The text is not UTF-8."));
}

// The line up to its comment.
QStringView WithoutComment(QStringView line) {
  for (qsizetype i = 0; i < line.size(); ++i)
    if (line[i] == u'%' && (i == 0 || line[i - 1] != u'\\')) return line.first(i);
  return line;
}

// A letter and a colon open a field, but for "A:|", which is a note and a repeat sign.
bool IsField(QStringView line) {
  const bool letter = line.size() >= 2 && line[1] == u':' &&
                      ((line[0] >= u'A' && line[0] <= u'Z') || (line[0] >= u'a' && line[0] <= u'z'));
  return letter && !(line.size() >= 3 && (line[2] == u'|' || line[2] == u':'));
}

class Reader {
 public:
  explicit Reader(AbcTune& tune) : tune_(tune) {}

  void Read(const QString& text) {
    int number = 0;
    for (QStringView line : QStringView(text).split(u'\n')) {
      ++number;
      if (line.endsWith(u'\r')) line.chop(1);
      position_ = {number, 1};
      ReadLine(line);
    }
    Finish();
  }

  TextPosition Position() const { return position_; }

 private:
  enum class Stage { kBefore, kHeader, kMusic, kBehind };

  void ReadLine(QStringView line) {
    if (line.startsWith(u"%%")) return ReadDirective(line);
    if (line.trimmed().isEmpty()) {
      if (stage_ == Stage::kHeader) Fail(position_, QStringLiteral("The header ends without a key (K:)."));
      if (stage_ == Stage::kMusic) stage_ = Stage::kBehind;
      return;
    }
    const QStringView text = WithoutComment(line);
    if (text.trimmed().isEmpty()) return;
    if (text.startsWith(u"X:")) {
      if (stage_ != Stage::kBefore)
        Fail(position_, QStringLiteral("A file holds one tune; this is a second."));
      stage_ = Stage::kHeader;
      return;
    }
    switch (stage_) {
      case Stage::kBefore:
        Fail(position_, QStringLiteral("A tune begins with a number (X:)."));
      case Stage::kHeader:
        return ReadHeaderLine(text);
      case Stage::kMusic:
        return ReadMusicLine(text);
      case Stage::kBehind:
        Fail(position_, QStringLiteral("An empty line ends the tune, and nothing may follow it."));
    }
  }

  void ReadDirective(QStringView line) {
    AbcCursor cursor(line.sliced(2), position_.line, 3);
    if (stage_ == Stage::kHeader) return header_.ReadDirective(cursor);
    if (stage_ == Stage::kMusic && TakeMidiCommand(cursor)) return ReadMidi(cursor);
    if (AbcHeader::IsCatalogueLine(cursor.Rest()))
      Fail(position_, QStringLiteral("Lines of the catalogue stand in the header, between X: and K:."));
  }

  void ReadMidi(const AbcCursor& command) {
    AbcCursor cursor(WithoutComment(command.Rest()), command.Position().line, command.Position().column);
    music_->ReadMidi(cursor);
  }

  void ReadHeaderLine(QStringView text) {
    if (!IsField(text)) Fail(position_, QStringLiteral("A line of the header is a field such as T:."));
    AbcCursor cursor(text.sliced(2), position_.line, 3);
    if (!header_.ReadField(text[0], position_, cursor)) return;
    music_.emplace(header_.StartMusic(position_));
    stage_ = Stage::kMusic;
  }

  void ReadMusicLine(QStringView text) {
    if (text.startsWith(u"+:"))
      Fail(position_, QStringLiteral("Continued fields are not supported; write one line."));
    if (!IsField(text)) {
      AbcCursor cursor(text, position_.line);
      return music_->ReadLine(cursor);
    }
    AbcCursor cursor(text.sliced(2), position_.line, 3);
    const QChar letter = text[0];
    if (letter == u'w') return music_->ReadWords(cursor);
    if (letter == u'W' || music_->ReadField(letter, position_, cursor)) return;
    Fail(position_, QStringLiteral("The field %1: means nothing within the music.").arg(letter));
  }

  void Finish() {
    if (stage_ == Stage::kBefore) Fail(position_, QStringLiteral("There is no tune here."));
    if (!music_) Fail(position_, QStringLiteral("The header ends without a key (K:)."));
    music_->Finish();
    header_.Describe(tune_);
    header_.EquipVoices(music_->Voices());
    TimeVoices(music_->Voices(), header_.Metre(), header_.Order(), tune_);
    const bool sounds = std::ranges::any_of(
        tune_.events, [](const AbcEvent& event) { return event.event_type == MUSIC_NOTE; });
    if (!sounds) Fail(position_, QStringLiteral("The tune has no notes."));
    header_.AddThemes(tune_);
  }

  AbcTune& tune_;
  Stage stage_ = Stage::kBefore;
  TextPosition position_;
  AbcHeader header_;
  std::optional<AbcMusic> music_;
};

}  // namespace

AbcTune ReadAbc(const QByteArray& text, const QString& file) {
  AbcTune tune;
  tune.catalogue.code_name = QFileInfo(file).completeBaseName();
  Reader reader(tune);
  try {
    reader.Read(Decoded(text));
    // The name goes between square brackets and quotation marks of statements.
    static const QRegularExpression safe(QStringLiteral("^[A-Za-z0-9][A-Za-z0-9 _-]{0,63}$"));
    if (!safe.match(tune.catalogue.code_name).hasMatch())
      Fail({}, QStringLiteral("A CodeName has letters, digits, blanks, \"_\" and \"-\" only."));
  } catch (const TextError& error) {
    throw TextError(error.Position(), error.Sentence(), QFileInfo(file).fileName());
  } catch (const OverflowError&) {
    throw TextError(reader.Position(), QStringLiteral("The lengths of this tune are out of range."),
                    QFileInfo(file).fileName());
  }
  return tune;
}

AbcTune ReadAbcFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    throw Failure(error_number::kFileAccess,
                  QStringLiteral("The tune %1 cannot be read: %2.").arg(path, file.errorString()));
  return ReadAbc(file.readAll(), path);
}

}  // namespace zelmar
