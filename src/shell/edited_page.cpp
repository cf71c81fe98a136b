#include "shell/edited_page.h"

#include <QAbstractButton>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QStackedLayout>
#include <utility>

#include "model/text_pages.h"
#include "platform/failure.h"
#include "platform/services.h"
#include "shell/page_view.h"

namespace zelmar {

namespace {

const QString kEmptyPage = QStringLiteral("<html></html>");

void Tell(const QString& trouble) {
  ShowMessage(MessageIcon::kExclamation, trouble);
}

}  // namespace

// Shows a text as the scratch page whatever that file holds: several windows write it, and its folder may be
// protected.
class EditedPage::View : public PageView {
 public:
  using PageView::PageView;

  // A page that is not there is an empty one.
  void ShowFile(const QString& path) {
    own_page_.clear();
    // A page of another folder than that of the help is let in by being asked for.
    const QUrl before = source();
    if (QFileInfo::exists(path)) ShowPage(path);
    Open(QUrl::fromLocalFile(path), before);
  }

  void ShowOwnText(const QString& html) {
    own_text_ = html;
    own_page_ = QUrl::fromLocalFile(ScratchPage());
    Open(own_page_, source());
  }

 protected:
  QVariant loadResource(int type, const QUrl& name) override {
    const bool is_own = type == QTextDocument::HtmlResource && !own_page_.isEmpty() && name == own_page_;
    const QVariant read = is_own ? QVariant(own_text_) : PageView::loadResource(type, name);
    // The browser warns of a page without a letter.
    return type == QTextDocument::HtmlResource && read.toString().isEmpty() ? QVariant(kEmptyPage) : read;
  }

 private:
  // Reads the page anew where it is the one `before`. Pages of other records are not gone back to.
  void Open(const QUrl& page, const QUrl& before) {
    if (page == before)
      reload();
    else
      setSource(page);
    clearHistory();
  }

  QString own_text_;
  QUrl own_page_;
};

EditedPage::EditedPage(const QString& view_name, const QString& text_name, QWidget* parent)
    : QWidget(parent),
      view_(new View(this)),
      text_(new QPlainTextEdit(this)),
      faces_(new QStackedLayout(this)) {
  view_->setObjectName(view_name);
  view_->setAccessibleName(tr("Page"));
  text_->setObjectName(text_name);
  text_->setAccessibleName(tr("Text of the page"));
  text_->setTabChangesFocus(true);
  faces_->addWidget(view_);
  faces_->addWidget(text_);
  setFocusProxy(view_);
}

// --- What it shows ---

void EditedPage::BeginPage() {
  page_.clear();
  store_ = nullptr;
  is_text_ = false;
}

bool EditedPage::ShowPageOf(const QString& value) {
  const QPointer<EditedPage> self(this);
  if (!EndEditing() || !self) return false;
  BeginPage();
  const QString page = PageOf(value);
  if (!self) return false;
  page_ = page;
  ShowPreview();
  return true;
}

bool EditedPage::ShowText(const QString& title, const QString& body,
                          std::function<void(const QString&)> store, const QString& body_attributes) {
  const QPointer<EditedPage> self(this);
  if (!EndEditing() || !self) return false;
  BeginPage();
  is_text_ = true;
  title_ = title;
  body_ = body;
  body_attributes_ = body_attributes;
  store_ = std::move(store);
  ShowPreview();
  return true;
}

bool EditedPage::ShowNothing() {
  return ShowPageOf({});
}

bool EditedPage::RenamePage(const QString& value) {
  const QPointer<EditedPage> self(this);
  if (!EndEditing() || !self) return false;
  const QString from = page_;
  const QString to = PageOf(value);
  if (!self) return false;
  MovePage(from, to);
  page_ = to;
  ShowPreview();
  return true;
}

void EditedPage::ShowPreview() {
  if (is_text_) {
    const QString attributes = body_attributes_.isEmpty() ? QString() : u' ' + body_attributes_;
    const QString html =
        QStringLiteral("<html><head><title>%1</title></head><body%2>").arg(title_, attributes) + body_ +
        QStringLiteral("</body></html>");
    try {
      WritePage(ScratchPage(), html);
    } catch (const Failure&) {
      // The view has the text itself; the file is there for other programs.
    }
    view_->ShowOwnText(ShownForm({html.left(kLongestPage), true, html.size() > kLongestPage}));
  } else if (page_.isEmpty()) {
    view_->ShowOwnText({});
  } else {
    view_->ShowFile(page_);
  }
  faces_->setCurrentWidget(view_);
  setFocusProxy(view_);
  ShowButtons();
}

// --- Editing ---

bool EditedPage::CanBeEdited() const {
  return editable_ && (is_text_ ? store_ != nullptr : !page_.isEmpty());
}

bool EditedPage::SetEditable(bool editable) {
  const QPointer<EditedPage> self(this);
  if (!editable && !EndEditing()) return false;
  if (!self) return false;
  editable_ = editable;
  ShowButtons();
  return true;
}

void EditedPage::Flip() {
  if (editing_) {
    const QPointer<EditedPage> self(this);
    if (Store() && self) Discard();
  } else if (CanBeEdited()) {
    BeginEditing();
  }
}

void EditedPage::BeginEditing() {
  QString text = body_;
  if (!is_text_) {
    const PageText page = ReadPage(page_);
    if (!page.trouble.isEmpty())
      return Tell(QStringLiteral("The page cannot be read: %1.").arg(page.trouble));
    // What is stored would be its beginning alone.
    if (page.is_cut) return Tell(QStringLiteral("This page is too long to be edited here."));
    text = page.text;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\n', u' ');
  }
  text_->setPlainText(text);
  text_->document()->setModified(false);
  editing_ = true;
  faces_->setCurrentWidget(text_);
  setFocusProxy(text_);
  text_->setFocus();
  ShowButtons();
  Q_EMIT EditingChanged();
}

bool EditedPage::Store() {
  if (!text_->document()->isModified()) return true;
  const QString text = text_->toPlainText();
  const QString body_before = std::exchange(body_, text);
  // Who stores a text may show something else here before it returns: it finds nothing left to store.
  text_->document()->setModified(false);
  const QPointer<EditedPage> self(this);
  const auto store = is_text_ ? store_ : [this](const QString& typed) { WritePage(page_, typed); };
  try {
    store(text);
    return true;
  } catch (const Failure& failure) {
    if (self && editing_) {
      body_ = body_before;
      text_->document()->setModified(true);
    }
    Tell(failure.Description());
    return false;
  }
}

bool EditedPage::EndEditing() {
  if (!editing_) return true;
  const QPointer<EditedPage> self(this);
  const auto ask = text_->document()->isModified() ? ask_ : nullptr;
  const Leaving leaving = ask ? ask() : Leaving::kStore;
  if (!self || leaving == Leaving::kStay) return false;
  if (leaving == Leaving::kStore && !Store()) return false;
  if (self && editing_) Discard();
  return self != nullptr;
}

void EditedPage::Discard() {
  if (!editing_) return;
  editing_ = false;
  text_->clear();
  ShowPreview();
  Q_EMIT EditingChanged();
}

// --- The button ---

void EditedPage::Attach(QAbstractButton* button, const QString& preview_caption,
                        const QString& edit_caption) {
  button_ = button;
  preview_caption_ = preview_caption;
  edit_caption_ = edit_caption;
  connect(button, &QAbstractButton::clicked, this, &EditedPage::Flip);
  ShowButtons();
}

void EditedPage::ShowButtons() {
  if (!button_) return;
  button_->setText(editing_ ? preview_caption_ : edit_caption_);
  button_->setEnabled(CanBeEdited());
}

}  // namespace zelmar
