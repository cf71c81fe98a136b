#include "app/terminal.h"

#include <algorithm>
#include <cstdio>
#include <optional>

#include "platform/failure.h"

namespace zelmar {

namespace {

using enum TerminalRow::Kind;

constexpr int kLongestName = 24;  // of one that has its help on the same line

// --- What a row takes ---

struct Signature {
  QStringList values;           // "<file>", those that are needed first
  qsizetype needed = 0;         // how many of them
  bool endless = false;         // the last one takes all that come
  QMap<QString, bool> options;  // whether each has a value
};

Signature SignatureOf(const TerminalRow& row) {
  Signature signature;
  const QStringList words = QString(QLatin1String(row.arguments)).split(QLatin1Char(' '), Qt::SkipEmptyParts);
  for (qsizetype i = 0; i < words.size(); ++i) {
    QString word = words[i];
    if (word.startsWith(QLatin1String("[--"))) {
      const bool has_value = !word.endsWith(QLatin1Char(']'));
      signature.options.insert(word.remove(QLatin1Char('[')).remove(QLatin1Char(']')), has_value);
      if (has_value) ++i;
      continue;
    }
    if (!word.startsWith(QLatin1Char('['))) ++signature.needed;
    signature.endless = word.endsWith(QLatin1String("..."));
    signature.values.append(word.remove(QLatin1Char('[')).remove(QLatin1Char(']')).remove(QLatin1Char('.')));
  }
  return signature;
}

QStringList NamesOf(const TerminalRow& row) {
  return QString(QLatin1String(row.names)).split(QStringLiteral(", "));
}

QString FirstName(const TerminalRow& row) {
  return NamesOf(row).first();
}

const TerminalRow* RowNamed(const QString& name, std::span<const TerminalRow> rows) {
  const auto found = std::find_if(rows.begin(), rows.end(),
                                  [&name](const auto& row) { return NamesOf(row).contains(name); });
  return found != rows.end() ? &*found : nullptr;
}

// --- What the toolkit takes for itself ---

struct ToolkitOption {
  const char* name;
  bool has_value;
};
// As the toolkit documents them; each is taken with one dash and with two.
constexpr ToolkitOption kToolkitOptions[] = {
    {"display", true},
    {"geometry", true},
    {"icon", true},
    {"platform", true},
    {"platformpluginpath", true},
    {"platformtheme", true},
    {"plugin", true},
    {"qmljsdebugger", true},
    {"qwindowgeometry", true},
    {"qwindowicon", true},
    {"qwindowtitle", true},
    {"reverse", false},
    {"session", true},
    {"style", true},
    {"stylesheet", true},
    {"title", true},
    {"widgetcount", false},
};

const ToolkitOption* FindToolkitOption(QString name) {
  name.remove(0, name.startsWith(QLatin1String("--")) ? 2 : 1);
  for (const ToolkitOption& option : kToolkitOptions)
    if (name == QLatin1String(option.name)) return &option;
  return nullptr;
}

// --- Reading ---

// Reads words from the first to the last, or to the first mistake.
class Reader {
 public:
  Reader(const QStringList& words, std::span<const TerminalRow> rows) : words_(words), rows_(rows) {}

  TerminalCall Read() {
    while (at_ < words_.size() && call_.mistake.isEmpty()) ReadWord();
    if (call_.command != nullptr && call_.mistake.isEmpty() &&
        call_.arguments.values.size() < signature_.needed)
      Missing(*call_.command, signature_.values[call_.arguments.values.size()]);
    return call_;
  }

 private:
  void ReadWord() {
    const QString word = words_[at_++];
    const bool is_option = word.startsWith(QLatin1Char('-')) && word.size() > 1;
    // "--tour=picture.png" says what "--tour picture.png" says.
    const qsizetype sign = is_option ? word.indexOf(QLatin1Char('=')) : -1;
    const QString name = word.left(sign);
    joined_ = sign >= 0 ? std::optional(word.mid(sign + 1)) : std::nullopt;
    if (const TerminalRow* const row = RowNamed(name, rows_))
      ReadRow(*row);
    else if (!is_option)
      ReadValue(word);
    else if (signature_.options.contains(name))
      ReadOption(name);
    else if (const ToolkitOption* const option = FindToolkitOption(name))
      at_ += option->has_value && !joined_ ? 1 : 0;
    else
      call_.mistake = QStringLiteral("There is no option %1.").arg(name);
    if (joined_ && call_.mistake.isEmpty() && FindToolkitOption(name) == nullptr)
      call_.mistake = QStringLiteral("%1 takes no value.").arg(name);
  }

  void ReadRow(const TerminalRow& row) {
    if (row.kind == kSetting) {
      ReadSetting(row);
      return;
    }
    if (call_.command != nullptr) {
      call_.mistake =
          QStringLiteral("%1 and %2 are two commands.").arg(FirstName(*call_.command), FirstName(row));
      return;
    }
    call_.command = &row;
    signature_ = SignatureOf(row);
    if (joined_ && !signature_.values.isEmpty()) call_.arguments.values.append(TakeJoined());
  }

  void ReadSetting(const TerminalRow& row) {
    TerminalArguments arguments;
    for (const QString& value : SignatureOf(row).values) {
      const std::optional<QString> given = NextValue();
      if (!given) {
        Missing(row, value);
        return;
      }
      arguments.values.append(*given);
    }
    call_.settings.emplace_back(&row, arguments);
  }

  void ReadOption(const QString& name) {
    if (!signature_.options.value(name)) {
      call_.arguments.options.insert(name, QString());
    } else if (const std::optional<QString> given = NextValue()) {
      call_.arguments.options.insert(name, *given);
    } else {
      call_.mistake = QStringLiteral("%1 needs a value.").arg(name);
    }
  }

  void ReadValue(const QString& word) {
    if (call_.command == nullptr)
      call_.mistake = QStringLiteral("There is no command %1.").arg(word);
    else if (!signature_.endless && call_.arguments.values.size() >= signature_.values.size())
      call_.mistake = QStringLiteral("%1 takes no further word: %2.").arg(FirstName(*call_.command), word);
    else
      call_.arguments.values.append(word);
  }

  std::optional<QString> NextValue() {
    if (joined_) return TakeJoined();
    if (at_ < words_.size()) return words_[at_++];
    return std::nullopt;
  }
  QString TakeJoined() { return *std::exchange(joined_, std::nullopt); }

  void Missing(const TerminalRow& row, const QString& value) {
    call_.mistake = QStringLiteral("%1 needs %2.").arg(FirstName(row), value);
  }

  const QStringList& words_;
  std::span<const TerminalRow> rows_;
  qsizetype at_ = 0;
  std::optional<QString> joined_;  // what stands behind the "=" of a word, until it is taken
  Signature signature_;            // of the command
  TerminalCall call_;
};

void TellLine(const QString& line) {
  std::fprintf(stderr, "Zelmar: %s\n", qPrintable(line.simplified()));
}

QString Lines(std::span<const TerminalRow> rows, bool settings) {
  QString lines;
  for (const TerminalRow& row : rows) {
    if ((row.kind == kSetting) != settings) continue;
    const QString name =
        QStringLiteral("%1 %2").arg(QLatin1String(row.names), QLatin1String(row.arguments)).trimmed();
    const QString column = QString(kLongestName + 2, QLatin1Char(' '));
    lines += QStringLiteral("  ") + (name.size() < kLongestName ? name.leftJustified(kLongestName)
                                                                : name + QLatin1Char('\n') + column);
    lines += QLatin1String(row.help) + QLatin1Char('\n');
  }
  return lines;
}

}  // namespace

bool TerminalCall::NeedsWindows() const {
  return command == nullptr || command->kind == kWindowCommand;
}

TerminalCall ReadCall(const QStringList& words, std::span<const TerminalRow> rows) {
  for (const QString& word : words) {
    const TerminalRow* const row = RowNamed(word, rows);
    if (row == nullptr || row->kind != kQuestion) continue;
    TerminalCall question;
    question.command = row;
    return question;
  }
  return Reader(words, rows).Read();
}

void UseSettings(const TerminalCall& call) {
  for (const auto& [row, arguments] : call.settings) row->run(arguments);
}

int RunCommandOf(const TerminalCall& call) {
  try {
    return call.command->run(call.arguments);
  } catch (const Failure& failure) {
    return TellFailure(failure.Description());
  } catch (const std::exception& failure) {
    return TellFailure(QString::fromUtf8(failure.what()));
  }
}

int TellWrongUsage(const QString& mistake) {
  TellLine(mistake + QStringLiteral(" \"zelmar --help\" lists what there is."));
  return exit_status::kWrongUsage;
}

int TellFailure(const QString& failure) {
  TellLine(failure);
  return exit_status::kFailure;
}

QString TerminalHelp(std::span<const TerminalRow> rows) {
  return QStringLiteral(
             "Usage: zelmar [settings] [command]\n"
             "A catalogue of tunes and themes that can be read, heard, edited and searched.\n"
             "Without a command it opens its main window.\n"
             "\n"
             "Commands:\n") +
         Lines(rows, false) + QStringLiteral("\nSettings:\n") + Lines(rows, true) +
         QStringLiteral(
             "\nA command gives 0 when it is done, 1 when it failed and 2 when it was called wrongly; one "
             "line on the\nerror stream says why.\n");
}

}  // namespace zelmar
