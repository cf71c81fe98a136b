// A menu of commands. What leads to nothing yet stands dimmed in it, says so in its hint and to a screen
// reader, and can be chosen all the same.
#pragma once

#include <QMenu>

namespace zelmar {

class CommandMenu : public QMenu {
  Q_OBJECT

 public:
  CommandMenu(const QString& title, QWidget* parent);

  // Names the window or command that the item leads to.
  static void LeadsTo(QAction& item, const QString& name);
  // True for an item that leads to nothing yet, and for a submenu of such items alone.
  static bool IsDimmed(const QAction& item);
  // What the item is called, with what is to be known of it.
  static QString SpokenName(const QAction& item);

 protected:
  void initStyleOption(QStyleOptionMenuItem* option, const QAction* action) const override;

 private:
  void ShowHintOf(const QAction* item);
};

}  // namespace zelmar
