#include "app/terminal_commands.h"

#include <cstdio>

#include "app/product.h"
#include "app/terminal.h"
#include "app/tour.h"
#include "platform/paths.h"

namespace zelmar {

namespace {

using enum TerminalRow::Kind;

int PrintHelp(const TerminalArguments&) {
  std::fputs(qPrintable(TerminalHelp(TerminalRows())), stdout);
  return exit_status::kDone;
}

int PrintVersion(const TerminalArguments&) {
  std::printf("zelmar %s\n", qPrintable(VersionText()));
  return exit_status::kDone;
}

int UseApplicationDirectory(const TerminalArguments& arguments) {
  SetApplicationDirectory(arguments.values.first());
  return exit_status::kDone;
}

constexpr TerminalRow kRows[] = {
    {kQuestion, "--help, -h", "", "Tell what the program does from a terminal.", &PrintHelp},
    {kQuestion, "--version, -v", "", "Tell the version.", &PrintVersion},
    {kWindowCommand, "--tour", "<picture>",
     "Open and play a short tune, save a picture of the main window in <picture>, and end.",
     [](const TerminalArguments& arguments) { return Tour(arguments.values.first()); }},
    {kSetting, "--application-directory", "<directory>",
     "Use the settings, databases and help pages in <directory>.", &UseApplicationDirectory},
};

}  // namespace

std::span<const TerminalRow> TerminalRows() {
  return kRows;
}

}  // namespace zelmar
