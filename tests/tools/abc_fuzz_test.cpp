#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <random>

#include "abc_support.h"
#include "template/csv_table.h"

namespace zelmar {
namespace {

// Reads the text; whatever it is, the outcome is a tune or a mistake with a place inside the text.
void MustEnd(const QByteArray& text) {
  try {
    const AbcTune tune = ReadAbc(text, QStringLiteral("fuzz.abc"));
    EXPECT_FALSE(tune.events.empty());
    for (const AbcEvent& event : tune.events) {
      EXPECT_GE(event.bar, 1);
      EXPECT_LE(event.beat, tune.beats_per_bar);
      EXPECT_LT(event.tick, 480 / tune.beat_length);
      EXPECT_GT(event.duration, 0.0);
    }
  } catch (const TextError& error) {
    EXPECT_FALSE(error.Sentence().isEmpty());
    EXPECT_GE(error.Position().line, 1);
    EXPECT_LE(error.Position().line, text.count('\n') + 1);
    EXPECT_GE(error.Position().column, 1);
    EXPECT_LE(error.Position().column, text.size() + 1);
  }
}

QByteArray FileText(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

QStringList Files(const QString& folder, const QString& filter) {
  const QDir directory(QStringLiteral(ZELMAR_SOURCE_DIRECTORY "/data/") + folder);
  QStringList paths;
  for (const QString& name : directory.entryList({filter}, QDir::Files, QDir::Name))
    paths.append(directory.filePath(name));
  return paths;
}

TEST(AbcFuzz, RandomBytes) {
  std::mt19937 random(20);
  for (int round = 0; round < 3000; ++round) {
    QByteArray text(static_cast<qsizetype>(random() % 200), '\0');
    for (char& byte : text) byte = static_cast<char>(random());
    if (round % 2 == 0) text.prepend("X:1\nT:t\nM:4/4\nK:C\n");
    MustEnd(text);
  }
}

TEST(AbcFuzz, RandomSignsOfTheNotation) {
  static constexpr char signs[] = "ABCcdefgz|:[]()123459/,'^_=-><{}!\"~.&xZV:Q:K:M:L:w:\n \\ %";
  std::mt19937 random(7);
  for (int round = 0; round < 20000; ++round) {
    QByteArray text = "X:1\nT:t\nM:4/4\nL:1/4\nK:C\n";
    for (auto i = random() % 60; i > 0; --i) text += signs[random() % (sizeof signs - 1)];
    MustEnd(text);
  }
}

TEST(AbcFuzz, RandomOrdersPartsAndCommands) {
  static constexpr char signs[] = "ABC()239. ";
  static const QByteArrayList pieces = {"P:A\n",
                                        "P:B\n",
                                        "[P:C]",
                                        "C4 |\n",
                                        "|:",
                                        ":|",
                                        "|1",
                                        "|2",
                                        "V:2\n",
                                        "V:1\n",
                                        "%%MIDI control 1 2\n",
                                        "%%MIDI program 7\n",
                                        "[I:MIDI pitchbend 0 64]",
                                        "%%MIDI ",
                                        "C2-",
                                        "C2 ",
                                        "Z|\n",
                                        "[Q:1/4=60]"};
  std::mt19937 random(11);
  for (int round = 0; round < 20000; ++round) {
    QByteArray text = "X:1\nT:t\nM:4/4\nL:1/4\nP:";
    for (auto i = random() % 8; i > 0; --i) text += signs[random() % (sizeof signs - 1)];
    text += "\nK:C\n";
    for (auto i = random() % 20; i > 0; --i) text += pieces[static_cast<qsizetype>(random()) % pieces.size()];
    MustEnd(text);
  }
}

TEST(AbcFuzz, EveryTruncationOfEveryShippedTune) {
  for (const QString& path : Files(QStringLiteral("tunes"), QStringLiteral("*.abc"))) {
    const QByteArray text = FileText(path);
    for (qsizetype length = 0; length < text.size(); ++length) MustEnd(text.first(length));
  }
}

TEST(AbcFuzz, ShippedTunesWithBytesChanged) {
  std::mt19937 random(3);
  for (const QString& path : Files(QStringLiteral("tunes"), QStringLiteral("*.abc"))) {
    const QByteArray text = FileText(path);
    for (int round = 0; round < 300; ++round) {
      QByteArray changed = text;
      for (int i = 0; i < 3; ++i) changed[random() % changed.size()] = static_cast<char>(random() % 128);
      MustEnd(changed);
    }
  }
}

TEST(AbcFuzz, RepeatsUponRepeatsEnd) {
  QByteArray text = "X:1\nT:t\nM:4/4\nL:1/4\nK:C\n";
  for (int i = 0; i < 5000; ++i) text += "|:::::C4:::::|\n";
  MustEnd(text);
  MustEnd("X:1\nT:t\nM:4/4\nL:1/4\nK:C\n" + QByteArray("C4 ").repeated(120000));
  MustEnd("X:1\nT:t\nM:4/4\nL:1/4\nK:C\n|:" + QByteArray("C4|").repeated(90000) + "::::|");
}

TEST(CsvFuzz, RandomTextsAndTruncations) {
  static constexpr char signs[] = "ab,\"\n\r 1";
  std::mt19937 random(5);
  const auto must_end = [](const QByteArray& text) {
    try {
      const CsvTable table = ReadCsv(text, QStringLiteral("fuzz.csv"));
      for (const CsvTable::Row& row : table.rows) EXPECT_EQ(row.cells.size(), table.columns.size());
    } catch (const TextError& error) {
      EXPECT_GE(error.Position().line, 1);
      EXPECT_GE(error.Position().column, 1);
    }
  };
  for (int round = 0; round < 20000; ++round) {
    QByteArray text;
    for (auto i = random() % 40; i > 0; --i) text += signs[random() % (sizeof signs - 1)];
    must_end(text);
  }
  for (const QString& path : Files(QStringLiteral("tables"), QStringLiteral("*.csv"))) {
    const QByteArray text = FileText(path);
    for (qsizetype length = 0; length < text.size(); length += 7) must_end(text.first(length));
  }
}

}  // namespace
}  // namespace zelmar
