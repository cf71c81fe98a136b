#include "shell/entry_combo.h"

#include <QAbstractListModel>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "shell/field_check.h"

namespace zelmar {

namespace {

constexpr int kShortestText = 12;  // letters for which there is always room
constexpr int kVisibleEntries = 16;
constexpr int kWidestList = 520;     // pixels
constexpr int kRoomBesideText = 44;  // of an entry in the list: its margins and the scroll bar

// A list that measures one entry and not each of them.
void MeasureOneEntryForAll(QAbstractItemView* view) {
  view->setTextElideMode(Qt::ElideRight);
  if (auto* const list = qobject_cast<QListView*>(view)) list->setUniformItemSizes(true);
}

}  // namespace

class EntryCombo::EntryModel : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  void Set(std::vector<ComboEntry> entries) {
    beginResetModel();
    entries_ = std::move(entries);
    endResetModel();
  }
  const std::vector<ComboEntry>& Entries() const { return entries_; }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(entries_.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid()) return {};  // a combo without a choice asks for it all the same
    const ComboEntry& entry = entries_[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole || role == Qt::EditRole) return entry.text;
    return role == Qt::UserRole ? QVariant(entry.number) : QVariant();
  }

 private:
  std::vector<ComboEntry> entries_;
};

EntryCombo::EntryCombo(Typing typing, QWidget* parent)
    : QComboBox(parent), typing_(typing), entries_(new EntryModel(this)) {
  setModel(entries_);
  setInsertPolicy(NoInsert);
  setMaxVisibleItems(kVisibleEntries);
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(kShortestText);
  // A turn of the wheel over a box that scrolls by changes nothing in it.
  setFocusPolicy(Qt::StrongFocus);
  MeasureOneEntryForAll(view());
  if (typing_ == Typing::kNone)
    connect(this, &QComboBox::activated, this, &EntryCombo::Chosen);
  else
    AllowTyping();
}

EntryCombo::~EntryCombo() {
  // The end of a control moves the keyboard, which must meet no check any more.
  delete check_;
}

void EntryCombo::AllowTyping() {
  setEditable(true);
  auto* const completer = new QCompleter(entries_, this);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  completer->setCompletionMode(QCompleter::PopupCompletion);
  completer->setMaxVisibleItems(kVisibleEntries);
  setCompleter(completer);
  MeasureOneEntryForAll(completer->popup());
  check_ = new FieldCheck(this, lineEdit());
  // Before the check sees the keys.
  installEventFilter(this);
  connect(this, &QComboBox::activated, check_, &FieldCheck::TakeChoice);
  connect(check_, &FieldCheck::Accepted, this, &EntryCombo::Chosen);
  if (typing_ != Typing::kListed) return;
  check_->SetRules(
      {{[this](const QString& text) { return text.isEmpty() || IndexOf(text, Qt::CaseInsensitive) >= 0; },
        MessageIcon::kExclamation, tr("Not in the list"),
        [this] { return tr("\"%1\" is not in the list. Please choose an entry of it.").arg(Text()); }}});
}

const std::vector<ComboEntry>& EntryCombo::Entries() const {
  return entries_->Entries();
}

// The list may be wider than the box. Of the entry with most letters, since a measure of each takes its time.
void EntryCombo::MakeRoomFor(const std::vector<ComboEntry>& entries) {
  const auto longest = std::max_element(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
    return a.text.size() < b.text.size();
  });
  const int width =
      longest == entries.end() ? 0 : fontMetrics().horizontalAdvance(longest->text) + kRoomBesideText;
  view()->setMinimumWidth(std::min(width, kWidestList));
}

void EntryCombo::SetEntries(std::vector<ComboEntry> entries) {
  MakeRoomFor(entries);
  const QString text = Text();
  if (typing_ == Typing::kNone) {
    const std::optional<int> number = Number();
    const QSignalBlocker quiet(this);
    entries_->Set(std::move(entries));
    setCurrentIndex(number ? findData(*number) : -1);
    return;
  }
  // New entries are no change of the text: the check hears nothing of them.
  const bool typed = lineEdit()->isModified();
  const QSignalBlocker quiet(this);
  const QSignalBlocker quiet_line(lineEdit());
  entries_->Set(std::move(entries));
  setCurrentIndex(IndexOf(text, Qt::CaseSensitive));
  lineEdit()->setText(text);
  lineEdit()->setModified(typed);
}

int EntryCombo::IndexOf(const QString& text, Qt::CaseSensitivity sensitivity) const {
  int index = 0;
  for (const ComboEntry& entry : entries_->Entries()) {
    if (entry.text.compare(text, sensitivity) == 0) return index;
    ++index;
  }
  return -1;
}

void EntryCombo::SelectNumber(int number) {
  setCurrentIndex(findData(number));
}

std::optional<int> EntryCombo::Number() const {
  int index = currentIndex();
  // What is typed is no selection yet.
  if (check_ != nullptr && itemText(index) != Text()) index = IndexOf(Text(), Qt::CaseSensitive);
  if (index < 0) return std::nullopt;
  return entries_->Entries()[static_cast<std::size_t>(index)].number;
}

void EntryCombo::SetText(const QString& text) {
  const int index = IndexOf(text, Qt::CaseSensitive);
  setCurrentIndex(index);
  if (index < 0 && check_ != nullptr) setEditText(text);
}

// The case of an entry, before the text is tested and stored.
void EntryCombo::TakeSpellingOfEntry() {
  const int index = IndexOf(Text(), Qt::CaseInsensitive);
  if (index < 0 || itemText(index) == Text()) return;
  lineEdit()->selectAll();
  lineEdit()->insert(itemText(index));
}

bool EntryCombo::eventFilter(QObject* watched, QEvent* event) {
  if (watched == this && event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) TakeSpellingOfEntry();
  }
  return QComboBox::eventFilter(watched, event);
}

void EntryCombo::keyPressEvent(QKeyEvent* event) {
  if (check_ != nullptr && event->key() == Qt::Key_Down && event->modifiers() == Qt::NoModifier)
    showPopup();
  else
    QComboBox::keyPressEvent(event);
}

void EntryCombo::wheelEvent(QWheelEvent* event) {
  if (hasFocus())
    QComboBox::wheelEvent(event);
  else
    event->ignore();
}

}  // namespace zelmar
