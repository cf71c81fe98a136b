// The state that every window shares. Each value exists once for the process.
#pragma once

#include <QDate>
#include <QString>
#include <QTime>
#include <array>
#include <memory>

#include "model/companions.h"

namespace zelmar {

inline constexpr int kInstrumentCount = 129;  // 128 General MIDI patches and the drum kit
inline constexpr int kRecentTuneCount = 6;

struct Globals {
  QString HelpPath;
  QString HelpFile;
  QString DatabasePath;
  QDate DatabaseChangeDate;
  QTime DatabaseChangeTime;
  QString DatabaseChangePerson;
  QString DatabaseChangeComment;
  QString DatabaseTitle;
  bool DatabaseFailed = false;

  QString MidiMode;                // "GM", "GM2", "GS", "XG", or empty before the first reset
  std::int32_t MidiOutHandle = 0;  // of the open output device; 0 before the first open
  std::int16_t MidiDeviceNumber = 0;
  QString MidiDeviceName;
  bool SuppressBankMessages = false;
  bool MediaPlayerInstalled = false;

  std::shared_ptr<Tonebanks> TheToneBanks = std::make_shared<Tonebanks>();
  bool TuneLoadedFlag = false;
  bool MainFormLoaded = false;  // true once the system is closing

  // Newest first; an empty CodeName ends the used part.
  std::array<QString, kRecentTuneCount> RecentCodeNames;
  std::array<QString, kRecentTuneCount> RecentCaptions;

  std::array<QString, kInstrumentCount> InstrumentNames;
  std::array<bool, kInstrumentCount> InstrumentFavourite{};
  std::array<QString, kInstrumentCount> InstrumentFamily;
  std::array<std::uint8_t, kInstrumentCount> InstrumentBestOctave{};
};

// The one set of globals.
Globals& Global();

// Puts every global back to its value at start: for tests.
void ResetGlobals();

// Moves the recent tunes down by one and stores the new one first. Looks for no duplicate.
// The texts are taken by value: they may be entries of the very list that moves.
void AddRecentTune(QString code_name, QString caption);

// The smaller of two, the second on a tie.
std::int16_t SmallerOf(std::int16_t first, std::int16_t second);

// For key names as typed: one character in upper case, or the first in upper case and the last.
QString CapitaliseFirst(const QString& text);

// Replaces the first two blanks by "_".
QString BlanksToUnderscores(const QString& text);

}  // namespace zelmar
