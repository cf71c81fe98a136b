// Shows local pages: no scripts, nothing from the network. Web addresses open in the person's own browser,
// and a page or picture that is missing leaves its place empty. What a page names never leads outside the
// help tree, or the folder of a page that lies elsewhere.
#pragma once

#include <QTextBrowser>

namespace zelmar {

class PageView : public QTextBrowser {
  Q_OBJECT

 public:
  explicit PageView(QWidget* parent = nullptr);

  // `page` is a path, or a web address, which goes outside.
  void ShowPage(const QString& page);

 protected:
  QVariant loadResource(int type, const QUrl& name) override;
  void changeEvent(QEvent* event) override;
  void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;

 private:
  // True for what lies in the help tree or beside a page that was asked for.
  bool MayRead(const QString& path) const;

  QStringList folders_;  // of the pages that were asked for and lie elsewhere
  QStringList refused_;  // pictures that were told of
};

// Tells that a page or picture leads outside the folder of its kind and is not shown.
void SayPageOutside(const QString& name);

// True for "http://" and "https://" addresses.
bool IsWebAddress(const QString& page);

}  // namespace zelmar
