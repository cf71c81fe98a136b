// A page that is shown and, where it may be, turned into text to edit and back.
//
// It shows the page of a record of the library, or a text that is given to it (the description of a tune).
// What is edited belongs to the page that was shown when the editing began, whatever is shown next: it is
// stored there when the editing ends, or a hook says what becomes of it. What cannot be stored is told and
// stays on the screen.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

class QAbstractButton;
class QPlainTextEdit;
class QStackedLayout;

namespace zelmar {

class EditedPage : public QWidget {
  Q_OBJECT

 public:
  // What becomes of a changed text when another page comes, the page is locked or its window closes.
  enum class Leaving { kStore, kDiscard, kStay };

  // `view_name` and `text_name` are the system names of its two faces: "WebBiography" and "txtBiography".
  EditedPage(const QString& view_name, const QString& text_name, QWidget* parent = nullptr);

  // --- What it shows ---

  // The page of the record with this value: see PageOf. An empty value, and one that names no page, shows
  // nothing. False when the text that was being edited holds its place.
  bool ShowPageOf(const QString& value);
  // `body` in a page with this title. It is written to the scratch page, and shown also where that cannot be.
  // What is edited goes to `store`; without one it cannot be edited. False as above.
  bool ShowText(const QString& title, const QString& body, std::function<void(const QString&)> store = {},
                const QString& body_attributes = {});
  bool ShowNothing();
  // The record of the page got another name, and its page with it: what is being edited is stored first.
  // False when that is held. Throws Failure when the name has a page already.
  bool RenamePage(const QString& value);
  // The file of the page; empty for a text and for nothing.
  const QString& Page() const { return page_; }

  // --- Editing ---

  // False at first, as records are locked at first. Taking it away ends the editing; false when that is held.
  bool SetEditable(bool editable);
  bool IsEditing() const { return editing_; }
  // From the page to its text and back.
  void Flip();
  // Ends the editing as a move to another page does: for a window that closes, a record that is left.
  bool EndEditing();
  // Ends the editing and forgets what was typed: for a record that goes.
  void Discard();
  // Asked, in place of storing, when another page comes, the page is locked or EndEditing is called.
  void OnLeaving(std::function<Leaving()> ask) { ask_ = std::move(ask); }

  // A button that flips; its caption says which face a click leads to.
  void Attach(QAbstractButton* button, const QString& preview_caption, const QString& edit_caption);

 Q_SIGNALS:
  void EditingChanged();

 private:
  class View;

  bool CanBeEdited() const;
  void BeginEditing();
  // Stores what was changed. False when that cannot be, which it tells.
  bool Store();
  void ShowPreview();
  void ShowButtons();
  void BeginPage();

  View* view_;
  QPlainTextEdit* text_;
  QStackedLayout* faces_;

  QString page_;                               // the file that is shown and edited
  QString title_, body_, body_attributes_;     // of a text
  std::function<void(const QString&)> store_;  // of a text
  bool is_text_ = false;
  bool editable_ = false;
  bool editing_ = false;
  std::function<Leaving()> ask_;

  QPointer<QAbstractButton> button_;
  QString preview_caption_, edit_caption_;
};

}  // namespace zelmar
