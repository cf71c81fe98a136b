#include "app/option_windows_fixture.h"

#include <QDir>

namespace zelmar {

OptionWindowTest::OptionWindowTest() {
  Global().DatabaseChangeDate = QDate(2026, 3, 4);
  Global().DatabaseChangeTime = QTime(10, 20, 30);
  Global().DatabaseChangePerson = QStringLiteral("Ann");
  Global().DatabaseChangeComment = QStringLiteral("First one");
  Global().MidiDeviceName = QStringLiteral("Recorder");
  Global().MidiMode = QStringLiteral("GS");
  WriteSettings();
}

QByteArray OptionWindowTest::BytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void OptionWindowTest::WriteBytes(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_EQ(file.write(bytes), bytes.size());
}

QStringList OptionWindowTest::Files() const {
  return QDir(database_.Directory()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

std::set<std::uint32_t> OptionWindowTest::Sounding() const {
  std::set<std::uint32_t> notes;
  for (const auto& message : platform_.midi->sent) {
    using Kind = testing_support::SentMessage::Kind;
    if (message.kind == Kind::kReset || message.kind == Kind::kClose) notes.clear();
    if (message.kind != Kind::kShort || (message.packed & 0xF0U) != 0x90U) continue;
    const std::uint32_t note = message.packed & 0x7F0FU;
    if (message.packed >> 16U != 0)
      notes.insert(note);
    else
      notes.erase(note);
  }
  return notes;
}

std::vector<std::uint32_t> OptionWindowTest::PitchesOn() const {
  std::vector<std::uint32_t> pitches;
  for (const std::uint32_t word : platform_.midi->ShortMessages())
    if ((word & 0xF0U) == 0x90U && word >> 16U != 0) pitches.push_back((word >> 8U) & 0x7FU);
  return pitches;
}

}  // namespace zelmar
