// What the program does when it is called from a terminal: its commands and options as rows of one table, and
// how a call is read by it.
//
// A call is read before any window, device or SoundFont is touched.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <span>
#include <utility>
#include <vector>

namespace zelmar {

// What the program hands back to the terminal.
namespace exit_status {
inline constexpr int kDone = 0;
inline constexpr int kFailure = 1;     // told in one line on the error stream
inline constexpr int kWrongUsage = 2;  // told in one line on the error stream
}  // namespace exit_status

// What a call says behind the name of a row.
struct TerminalArguments {
  QStringList values;              // in their order
  QMap<QString, QString> options;  // "--replace" with nothing, or "--tempo" with its value

  bool Has(const char* option) const { return options.contains(QLatin1String(option)); }
};

struct TerminalRow {
  enum class Kind {
    kQuestion,       // is answered whatever else the call says, and ends the program
    kCommand,        // works without a window, and ends the program
    kWindowCommand,  // works with windows in place of a person, and ends the program
    kSetting,        // holds for what the call does; its function gives nothing back that counts
  };
  Kind kind;
  // "--help, -h": all names, the first of them before all others.
  const char* names;
  // "<file> [<title>] [--replace] [--tempo <beats>]": what is needed, what may follow, and what may be said
  // anywhere behind the name. "<file>..." takes as many as there are, one at least. A setting has values that
  // are needed, and nothing else.
  const char* arguments;
  const char* help;  // one line
  // Gives an exit status. A failure that it throws is told, and is kFailure.
  int (*run)(const TerminalArguments& arguments);
};

struct TerminalCall {
  std::vector<std::pair<const TerminalRow*, TerminalArguments>> settings;
  const TerminalRow* command = nullptr;  // null opens the main window for a person
  TerminalArguments arguments;           // of the command
  QString mistake;                       // what is wrong with the call; empty for a right one

  bool NeedsWindows() const;
};

// Reads a call, the name of the program left out. What the windows' toolkit takes for itself, such as
// "-platform offscreen", is passed over.
TerminalCall ReadCall(const QStringList& words, std::span<const TerminalRow> rows);

// Puts the settings of a call in force. Throws what their functions throw.
void UseSettings(const TerminalCall& call);

// Runs the command of a call and gives its exit status.
int RunCommandOf(const TerminalCall& call);

// Each tells its line on the error stream and gives the exit status that goes with it.
int TellWrongUsage(const QString& mistake);
int TellFailure(const QString& failure);

// What "--help" prints.
QString TerminalHelp(std::span<const TerminalRow> rows);

}  // namespace zelmar
