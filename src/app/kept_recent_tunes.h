// The recent tunes as the database keeps them from one run to the next.
#pragma once

#include <QString>
#include <array>
#include <memory>

#include "model/globals.h"

namespace zelmar {

class Connection;

class KeptRecentTunes {
 public:
  // Puts the stored list into the globals. Throws SubscriptError when it is longer than they are.
  void Read(const std::shared_ptr<Connection>& connection);

  // Stores the list of the globals. Tells the user when there is no database; leaves one alone that can only
  // be read. Throws DatabaseError.
  void Write();
  // The same whenever the list has changed, so that it outlives a program that is killed. Asks and tells
  // nothing: what cannot be written has its last chance, and its words, at the end of the program.
  void WriteChange();

 private:
  using Names = std::array<QString, kRecentTuneCount>;

  void WriteTo(const std::shared_ptr<Connection>& connection);

  Names written_;
};

}  // namespace zelmar
