// A combo box over entries of text and number (see model/combo_entries.h and store/statement_entries.h).
//
// Without typing it is a list to choose from. With typing it completes as typed and the down key opens the
// list; what was typed is settled when the box is left or on Enter, under the rules of its FieldCheck. A text
// that differs from an entry in case alone becomes that entry. Lists of any length open at once.
#pragma once

#include <QComboBox>
#include <optional>
#include <vector>

#include "model/combo_entries.h"

namespace zelmar {

class FieldCheck;

enum class Typing {
  kNone,
  kListed,  // an entry or nothing; a message refuses anything else unless the check gets other rules
  kFree     // any text
};

class EntryCombo : public QComboBox {
  Q_OBJECT

 public:
  explicit EntryCombo(Typing typing, QWidget* parent = nullptr);
  ~EntryCombo() override;

  // What is selected or typed stays; without typing, an entry that is gone leaves none selected. Nothing is
  // selected at first.
  void SetEntries(std::vector<ComboEntry> entries);
  const std::vector<ComboEntry>& Entries() const;

  // Selects the first entry with the number, none when there is none. No signal tells of it.
  void SelectNumber(int number);
  // The number of the entry that is selected or whose text is typed.
  std::optional<int> Number() const;
  // Selects the first entry with that very text; else types it, or selects none where nothing can be typed.
  void SetText(const QString& text);
  QString Text() const { return currentText(); }

  // Null without typing.
  FieldCheck* Check() const { return check_; }

 Q_SIGNALS:
  // A person chose an entry, or typed a text that was accepted.
  void Chosen();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  class EntryModel;

  void AllowTyping();
  void MakeRoomFor(const std::vector<ComboEntry>& entries);
  int IndexOf(const QString& text, Qt::CaseSensitivity sensitivity) const;
  void TakeSpellingOfEntry();

  Typing typing_;
  EntryModel* entries_;
  FieldCheck* check_ = nullptr;
};

}  // namespace zelmar
