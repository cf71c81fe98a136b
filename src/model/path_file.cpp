#include "model/path_file.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <variant>
#include <vector>

#include "model/globals.h"
#include "platform/failure.h"

namespace zelmar {

namespace {

struct Labels {
  const char* device;
  const char* media_player;
  const char* mode;
};

// By PathFileWriter.
constexpr Labels kLabels[] = {
    {"Midi output device", "Media Player", "MIDI Mode"},
    {"Midi output device", "Media player info", "Midi mode"},
    {"Midi output device", "Midi Mode, and Media Player info", "Midi mode"},
    {"Midi output device", "Windows Media Player support", "Midi mode"},
};

struct HashMarked {
  QString text;
};

using Value = std::variant<QString, HashMarked, qint64>;
using Record = std::vector<Value>;

// Reads values one after another, keeping its line for messages.
class RecordReader {
 public:
  RecordReader(const QString& text, const QString& path) : text_(text), path_(path) {}

  bool AtEnd() const { return place_ >= text_.size(); }

  // The next record. Throws Failure when it is malformed.
  Record Next() {
    ++record_;
    if (AtEnd()) Fail(QStringLiteral("the file ends before it"));
    Record record;
    while (true) {
      record.push_back(NextValue());
      if (AtEnd()) return record;
      while (!AtEnd() && text_[place_] == u' ') ++place_;
      if (AtEnd()) return record;
      const QChar separator = text_[place_++];
      if (separator == u'\r' && !AtEnd() && text_[place_] == u'\n') ++place_;
      if (separator == u'\n' || separator == u'\r') return record;
      if (separator != u',') Fail(QStringLiteral("a comma is missing"));
    }
  }

  // Leaves what is left of a line that could not be read.
  void SkipToNextLine() {
    if (place_ > 0 && text_[place_ - 1] == u'\n') return;
    const qsizetype end = text_.indexOf(u'\n', place_);
    place_ = end < 0 ? text_.size() : end + 1;
  }

  [[noreturn]] void Fail(const QString& reason) const {
    throw Failure(error_number::kInvalidCall,
                  QStringLiteral("The path file %1 cannot be read: record %2, %3.")
                      .arg(path_)
                      .arg(record_)
                      .arg(reason));
  }

 private:
  Value NextValue() {
    while (!AtEnd() && text_[place_] == u' ') ++place_;
    if (AtEnd()) Fail(QStringLiteral("a value is missing"));
    const QChar first = text_[place_];
    if (first == u'"') return QuotedText();
    if (first == u'#') return Marked();
    return WholeNumber();
  }

  QString QuotedText() {
    QString value;
    for (++place_; !AtEnd(); ++place_) {
      if (text_[place_] != u'"') {
        value += text_[place_];
      } else if (place_ + 1 < text_.size() && text_[place_ + 1] == u'"') {
        value += u'"';
        ++place_;
      } else {
        ++place_;
        return value;
      }
    }
    Fail(QStringLiteral("a text has no closing quotation mark"));
  }

  HashMarked Marked() {
    const qsizetype end = text_.indexOf(u'#', place_ + 1);
    if (end < 0) Fail(QStringLiteral("a value has no closing hash mark"));
    const QString value = text_.mid(place_ + 1, end - place_ - 1);
    place_ = end + 1;
    return {value};
  }

  qint64 WholeNumber() {
    const qsizetype start = place_;
    while (!AtEnd() && text_[place_] != u',' && text_[place_] != u'\n' && text_[place_] != u'\r') ++place_;
    const QString value = text_.mid(start, place_ - start).trimmed();
    bool ok = false;
    const qint64 number = value.toLongLong(&ok);
    if (!ok) Fail(QStringLiteral("\"%1\" is not a value").arg(value));
    return number;
  }

  const QString text_;
  const QString path_;
  qsizetype place_ = 0;
  int record_ = 0;
};

// The value number `index` of a record as a T. Throws Failure when it is missing or of another type.
template <typename T>
const T& Field(const RecordReader& reader, const Record& record, std::size_t index) {
  if (index >= record.size()) reader.Fail(QStringLiteral("value %1 is missing").arg(index + 1));
  const T* value = std::get_if<T>(&record[index]);
  if (value == nullptr) reader.Fail(QStringLiteral("value %1 is of the wrong type").arg(index + 1));
  return *value;
}

struct DatabaseRecord {
  QString path;
  QDate date;
  QTime time;
  QString person;
  QString comment;
};

struct DeviceRecord {
  std::int16_t number = 0;
  QString name;
};

DatabaseRecord ReadDatabase(RecordReader& reader) {
  const Record record = reader.Next();
  DatabaseRecord result;
  result.path = Field<QString>(reader, record, 0);
  result.date = QDate::fromString(Field<HashMarked>(reader, record, 1).text, Qt::ISODate);
  if (!result.date.isValid()) reader.Fail(QStringLiteral("value 2 is not a date"));
  result.time = QTime::fromString(Field<HashMarked>(reader, record, 2).text, Qt::ISODate);
  if (!result.time.isValid()) reader.Fail(QStringLiteral("value 3 is not a time"));
  result.person = Field<QString>(reader, record, 3);
  result.comment = Field<QString>(reader, record, 4);
  return result;
}

DeviceRecord ReadDevice(RecordReader& reader) {
  const Record record = reader.Next();
  Field<QString>(reader, record, 0);
  const qint64 number = Field<qint64>(reader, record, 1);
  if (!std::in_range<std::int16_t>(number)) reader.Fail(QStringLiteral("the device number is out of range"));
  return {static_cast<std::int16_t>(number), Field<QString>(reader, record, 2)};
}

void ReadMediaPlayer(RecordReader& reader) {
  const Record record = reader.Next();
  Field<QString>(reader, record, 0);
  const QString value = Field<HashMarked>(reader, record, 1).text;
  if (value != QLatin1String("TRUE") && value != QLatin1String("FALSE"))
    reader.Fail(QStringLiteral("value 2 is not a truth value"));
  Global().MediaPlayerInstalled = value == QLatin1String("TRUE");
}

void ReadMode(RecordReader& reader) {
  const Record record = reader.Next();
  Field<QString>(reader, record, 0);
  Global().MidiMode = Field<QString>(reader, record, 1);
}

// A date or time that was never set is written as one that can be read again.
QString DateText(const QDate& date) {
  return QLatin1Char('#') + (date.isValid() ? date : QDate(1900, 1, 1)).toString(Qt::ISODate) +
         QLatin1Char('#');
}

QString TimeText(const QTime& time) {
  return QLatin1Char('#') + (time.isValid() ? time : QTime(0, 0)).toString(Qt::ISODate) + QLatin1Char('#');
}

QString Quoted(const QString& text) {
  QString doubled = text;
  doubled.replace(QLatin1Char('"'), QLatin1String("\"\""));
  return QLatin1Char('"') + doubled + QLatin1Char('"');
}

QString ReadWhole(const QString& path) {
  QFile file(path);
  if (QFileInfo(path).isDir())
    throw Failure(error_number::kFileAccess, QStringLiteral("The path file %1 is a folder.").arg(path));
  if (!file.exists())
    throw Failure(error_number::kFileNotFound, QStringLiteral("The path file %1 is missing.").arg(path));
  if (!file.open(QIODevice::ReadOnly))
    throw Failure(error_number::kFileAccess,
                  QStringLiteral("The path file %1 cannot be opened: %2.").arg(path, file.errorString()));
  QStringDecoder decoder(QStringDecoder::Utf8);
  return decoder(file.readAll());
}

QByteArray BytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void PutBack(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) file.write(bytes);
}

}  // namespace

void ReadPathFileIntoGlobals(const QString& path) {
  RecordReader reader(ReadWhole(path), path);
  const DatabaseRecord database = ReadDatabase(reader);
  const DeviceRecord device = ReadDevice(reader);

  Globals& globals = Global();
  globals.DatabasePath = database.path;
  globals.DatabaseChangeDate = database.date;
  globals.DatabaseChangeTime = database.time;
  globals.DatabaseChangePerson = database.person;
  globals.DatabaseChangeComment = database.comment;
  globals.MidiDeviceNumber = device.number;
  globals.MidiDeviceName = device.name;
  // An older file lacks these records, and one of them may be damaged; their globals then keep their values.
  for (const auto read : {ReadMediaPlayer, ReadMode}) {
    try {
      read(reader);
    } catch (const Failure&) {
      reader.SkipToNextLine();
    }
  }
}

void WritePathFile(const QString& path, PathFileWriter writer) {
  const Globals& globals = Global();
  const Labels& labels = kLabels[static_cast<std::size_t>(writer)];
  const auto label = [](const char* text) { return Quoted(QString::fromLatin1(text)); };
  const QStringList lines = {
      QStringList{Quoted(globals.DatabasePath), DateText(globals.DatabaseChangeDate),
                  TimeText(globals.DatabaseChangeTime), Quoted(globals.DatabaseChangePerson),
                  Quoted(globals.DatabaseChangeComment)}
          .join(QLatin1Char(',')),
      QStringList{label(labels.device), QString::number(globals.MidiDeviceNumber),
                  Quoted(globals.MidiDeviceName)}
          .join(QLatin1Char(',')),
      label(labels.media_player) + QLatin1String(globals.MediaPlayerInstalled ? ",#TRUE#" : ",#FALSE#"),
      label(labels.mode) + QLatin1Char(',') + Quoted(globals.MidiMode)};

  const QByteArray before = BytesOf(path);
  QFile file(path);
  const QByteArray bytes = (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
  const bool opened = file.open(QIODevice::WriteOnly | QIODevice::Truncate);
  if (opened && file.write(bytes) == bytes.size() && file.flush()) return;
  const QString reason = file.errorString();
  file.close();
  // A full disk still has the room that the old records took.
  if (opened) PutBack(path, before);
  throw Failure(error_number::kFileAccess,
                QStringLiteral("The path file %1 cannot be written: %2.").arg(path, reason));
}

}  // namespace zelmar
