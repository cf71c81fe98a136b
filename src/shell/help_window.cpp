#include "shell/help_window.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPointer>
#include <QSplitter>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include "platform/widgets/icons.h"
#include "platform/widgets/screen_place.h"
#include "platform/widgets/spacing.h"
#include "shell/button_keys.h"
#include "shell/help_book.h"
#include "shell/main_frame.h"
#include "shell/page_view.h"
#include "shell/what_is_there.h"

namespace zelmar {

namespace {

constexpr int kListWidth = 250;
constexpr int kPageWidth = 610;
constexpr int kHeight = 600;

// Shows the pages of the book, and what they show.
class BookView : public PageView {
 public:
  BookView(std::shared_ptr<HelpBook> book, QWidget* parent) : PageView(parent), book_(std::move(book)) {}

 protected:
  QVariant loadResource(int type, const QUrl& name) override {
    const QUrl whole = source().resolved(name);
    if (whole.scheme() != QLatin1String("qthelp")) return PageView::loadResource(type, name);
    const QByteArray bytes = book_->Read(whole);
    if (type == QTextDocument::ImageResource) return bytes;
    return type == QTextDocument::HtmlResource ? OnlyWhatIsThere(QString::fromUtf8(bytes))
                                               : QString::fromUtf8(bytes);
  }

 private:
  std::shared_ptr<HelpBook> book_;
};

QModelIndex Find(const HelpBook& book, const QModelIndex& parent, const QUrl& page) {
  const QAbstractItemModel& model = *book.Contents();
  for (int row = 0; row < model.rowCount(parent); ++row) {
    const QModelIndex place = model.index(row, 0, parent);
    // A chapter leads to its first page, which stands below it.
    if (model.rowCount(place) == 0 && book.PageInContents(place) == page) return place;
    if (const QModelIndex below = Find(book, place, page); below.isValid()) return below;
  }
  return {};
}

}  // namespace

void HelpWindow::ShowPage(std::shared_ptr<HelpBook> book, const QUrl& page) {
  static QPointer<HelpWindow> window;
  QWidget* const owner = OwnerOfNewWindow();
  if (window && window->book_ != book) delete window;
  if (!window) window = new HelpWindow(std::move(book), owner);
  // A window behind a modal one could not be used.
  if (window->parentWidget() != owner) window->setParent(owner, window->windowFlags());
  window->view_->setSource(page);
  window->show();
  window->raise();
  window->activateWindow();
}

HelpWindow::HelpWindow(std::shared_ptr<HelpBook> book, QWidget* owner)
    : QWidget(owner, Qt::Window), book_(std::move(book)), view_(new BookView(book_, this)) {
  setObjectName(QStringLiteral("HelpWindow"));
  setWindowTitle(QStringLiteral("Zelmar Help"));
  setWindowIcon(IconOf(QStringLiteral("help"), IconTone::kAccent));
  setAttribute(Qt::WA_DeleteOnClose);
  ResizeWithinScreen(*this, {kListWidth + kPageWidth, kHeight});
  view_->setObjectName(QStringLiteral("WebHelp"));
  connect(view_, &QTextBrowser::historyChanged, this, &HelpWindow::ShowPlaceInContents);

  auto* tabs = new QTabWidget(this);
  tabs->setObjectName(QStringLiteral("tabHelp"));
  tabs->setAccessibleName(tr("Contents and index"));
  tabs->addTab(MakeContents(), tr("&Contents"));
  tabs->addTab(MakeIndex(), tr("&Index"));
  auto* halves = new QSplitter(this);
  halves->addWidget(tabs);
  halves->addWidget(view_);
  halves->setStretchFactor(1, 1);
  halves->setSizes({kListWidth, kPageWidth});
  halves->setChildrenCollapsible(false);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(spacing::kMedium, spacing::kSmall, spacing::kMedium, spacing::kMedium);
  column->setSpacing(spacing::kSmall);
  column->addLayout(MakeButtons());
  column->addWidget(halves, 1);
  view_->setFocus();
}

QLayout* HelpWindow::MakeButtons() {
  const auto button = [this](const char* name, const char* icon, const QString& hint) {
    auto* made = new QToolButton(this);
    made->setObjectName(QLatin1String(name));
    made->setIcon(IconOf(QLatin1String(icon)));
    made->setIconSize(QSize(20, 20));
    made->setToolTip(hint);
    made->setAccessibleName(hint);
    made->setFocusPolicy(Qt::TabFocus);
    return made;
  };
  QToolButton* const back = button("cmdGoBack", "arrow_left", tr("Go back one page (Alt+Left)"));
  QToolButton* const forward = button("cmdGoForward", "arrow_right", tr("Go forward one page (Alt+Right)"));
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(back, &QToolButton::clicked, view_, &QTextBrowser::backward);
  connect(forward, &QToolButton::clicked, view_, &QTextBrowser::forward);
  connect(view_, &QTextBrowser::backwardAvailable, back, &QToolButton::setEnabled);
  connect(view_, &QTextBrowser::forwardAvailable, forward, &QToolButton::setEnabled);
  auto* row = new QHBoxLayout;
  row->setSpacing(spacing::kTight);
  row->addWidget(back);
  row->addWidget(forward);
  row->addStretch(1);
  return row;
}

QWidget* HelpWindow::MakeContents() {
  tvwContents_ = new QTreeView(this);
  tvwContents_->setObjectName(QStringLiteral("tvwContents"));
  tvwContents_->setAccessibleName(tr("Contents"));
  tvwContents_->setHeaderHidden(true);
  tvwContents_->setModel(book_->Contents());
  const auto open = [this](const QModelIndex& place) {
    if (const QUrl page = book_->PageInContents(place); page.isValid()) view_->setSource(page);
  };
  connect(tvwContents_, &QTreeView::clicked, this, open);
  connect(tvwContents_, &QTreeView::activated, this, open);
  connect(book_->Contents(), &QAbstractItemModel::modelReset, this, &HelpWindow::ShowPlaceInContents);
  return tvwContents_;
}

QWidget* HelpWindow::MakeIndex() {
  auto* page = new QWidget(this);
  txtFind_ = new QLineEdit(page);
  txtFind_->setObjectName(QStringLiteral("txtFind"));
  txtFind_->setPlaceholderText(tr("Look for"));
  txtFind_->setAccessibleName(tr("Look for a word of the index"));
  txtFind_->setClearButtonEnabled(true);
  lstIndex_ = new QListView(page);
  lstIndex_->setObjectName(QStringLiteral("lstIndex"));
  lstIndex_->setAccessibleName(tr("Index"));
  lstIndex_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  lstIndex_->setModel(book_->Index());
  connect(txtFind_, &QLineEdit::textChanged, this, [this](const QString& text) {
    book_->NarrowIndex(text.trimmed());
    lstIndex_->setCurrentIndex(book_->Index()->index(0, 0));
  });
  connect(txtFind_, &QLineEdit::returnPressed, this, [this] { OpenKeyword(lstIndex_->currentIndex()); });
  connect(lstIndex_, &QListView::clicked, this, &HelpWindow::OpenKeyword);
  connect(lstIndex_, &QListView::activated, this, &HelpWindow::OpenKeyword);
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, spacing::kSmall, 0, 0);
  column->setSpacing(spacing::kSmall);
  column->addWidget(txtFind_);
  column->addWidget(lstIndex_, 1);
  return page;
}

void HelpWindow::ShowPlaceInContents() {
  tvwContents_->expandAll();
  if (const QModelIndex place = Find(*book_, {}, view_->source()); place.isValid())
    tvwContents_->setCurrentIndex(place);
}

void HelpWindow::OpenKeyword(const QModelIndex& place) {
  if (!place.isValid()) return;
  const QList<HelpPageLink> pages = book_->PagesOfKeyword(place.data().toString());
  if (pages.size() < 2) {
    if (!pages.isEmpty()) view_->setSource(pages.first().address);
    return;
  }
  auto* choice = new QMenu(this);
  choice->setAttribute(Qt::WA_DeleteOnClose);
  for (const HelpPageLink& page : pages)
    connect(choice->addAction(page.title), &QAction::triggered, this,
            [this, address = page.address] { view_->setSource(address); });
  choice->popup(lstIndex_->viewport()->mapToGlobal(lstIndex_->visualRect(place).bottomLeft()));
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    close();
  else if (!PressesButton(*this, *event))
    QWidget::keyPressEvent(event);
}

}  // namespace zelmar
