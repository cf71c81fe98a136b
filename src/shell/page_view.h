// Shows local pages: no scripts, nothing from the network. Web addresses open in the person's own browser,
// and a page or picture that is missing leaves its place empty.
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
  void doSetSource(const QUrl& name, QTextDocument::ResourceType type) override;
};

// True for "http://" and "https://" addresses.
bool IsWebAddress(const QString& page);

}  // namespace zelmar
