// The window of the help book: contents and index beside the page.
//
// It may stand over a modal window, since that window's help is asked for there.
#pragma once

#include <QWidget>
#include <memory>

class QLineEdit;
class QListView;
class QTabWidget;
class QToolButton;
class QTreeView;

namespace zelmar {

class HelpBook;
class PageView;

class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  // Opens the page in the one instance, made on first use, in front of whatever window is at work.
  static void ShowPage(std::shared_ptr<HelpBook> book, const QUrl& page);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  HelpWindow(std::shared_ptr<HelpBook> book, QWidget* owner);

  QWidget* MakeContents();
  QWidget* MakeIndex();
  QLayout* MakeButtons();
  // Marks the page that is shown in the contents.
  void ShowPlaceInContents();
  void OpenKeyword(const QModelIndex& place);

  std::shared_ptr<HelpBook> book_;
  PageView* view_;
  QTreeView* tvwContents_ = nullptr;
  QLineEdit* txtFind_ = nullptr;
  QListView* lstIndex_ = nullptr;
};

}  // namespace zelmar
