// The parts that windows share, as a person sees them: in both schemes, in a window of 1024 x 768. Where the
// environment names a folder in ZELMAR_PICTURES, each is kept there as a picture.
#include <QApplication>
#include <QComboBox>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QTreeView>
#include <QVBoxLayout>

#include "model/globals.h"
#include "platform/widgets/spacing.h"
#include "shell/bound_fields.h"
#include "shell/edited_page.h"
#include "shell/list_preview.h"
#include "shell/page_canvas.h"
#include "shell/record_bar.h"
#include "shell/record_search.h"
#include "shell/theme.h"
#include "shell/tune_list.h"
#include "shell/tune_tree.h"
#include "store/connection.h"
#include "store/list_rows.h"
#include "store/record_cursor.h"
#include "store/recordset.h"
#include "support/application_directory.h"
#include "support/scripted_services.h"
#include "support/template_database.h"
#include "support/window_fixture.h"

namespace zelmar {
namespace {

using namespace testing_support;

class Gallery : public ::testing::TestWithParam<ColourScheme> {
 protected:
  Gallery() : library_(QStringLiteral(ZELMAR_BUILD_DIRECTORY "/ZelmarTemplate.mdb")) {
    ApplyTheme(*qApp, GetParam());
    window_.resize(1024, 768);
    column_.setContentsMargins(spacing::kLarge, spacing::kMedium, spacing::kLarge, spacing::kLarge);
    column_.setSpacing(spacing::kMedium);
  }
  ~Gallery() override {
    qApp->setStyleSheet(QString());
    QApplication::setPalette(before_);
  }

  std::shared_ptr<Connection> Library() const { return Connection::Open(library_.Path()); }

  // Nothing is cut off, no text is narrower than its words, and the picture is kept where that is wanted.
  void Look(const char* name) {
    window_.show();
    QCoreApplication::processEvents();
    int looked_at = 0;
    for (const QWidget* control : window_.findChildren<QWidget*>()) {
      const bool has_words = control->inherits("QAbstractButton") || control->inherits("QLabel") ||
                             control->inherits("QLineEdit") || control->inherits("QComboBox");
      if (!control->isVisible() || !has_words || control->parentWidget()->inherits("QLineEdit")) continue;
      ++looked_at;
      EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry()))
          << qPrintable(control->objectName());
      EXPECT_GE(control->width(), control->minimumSizeHint().width()) << qPrintable(control->objectName());
    }
    EXPECT_GT(looked_at, 0);
    EXPECT_EQ(window_.size(), QSize(1024, 768)) << "what stands in it needs more room";
    const QString folder = qEnvironmentVariable("ZELMAR_PICTURES");
    if (folder.isEmpty()) return;
    const QString scheme =
        GetParam() == ColourScheme::kDark ? QStringLiteral("dark") : QStringLiteral("light");
    EXPECT_TRUE(window_.grab().save(QStringLiteral("%1/%2-%3.png").arg(folder, QLatin1String(name), scheme)));
  }

  const QPalette before_ = QApplication::palette();
  ScriptedPlatform platform_;
  TemporaryApplicationDirectory directory_;
  TemplateDatabase library_;
  QWidget window_;
  QVBoxLayout column_{&window_};
};

TEST_P(Gallery, AWalkThroughRecordsWithTheirPageAndTunes) {
  directory_.Write(
      QStringLiteral("Help/texts/Beethoven.htm"),
      "<html><head><title>Beethoven</title></head><body><h2>Ludwig van Beethoven</h2><p>Born at <b>Bonn</b> "
      "in 1770, he came to Vienna at twenty-two and stayed there for the rest of his life. He wrote for the "
      "piano, for strings and for the orchestra, and went on when he could no longer hear.</p>"
      "<ul><li>Nine symphonies</li><li>Thirty-two piano sonatas</li></ul></body></html>");
  RecordCursor cursor({QStringLiteral("select * from tblComposer"), QStringLiteral("composer <> 'Various'"),
                       QStringLiteral("Order by COMPOSER"), QStringLiteral("COMPOSER")},
                      QStringLiteral("Composer No. "));
  cursor.OpenAll(Library());
  auto* const bar = new QHBoxLayout;
  bar->setSpacing(spacing::kMedium);
  auto* const search = new RecordSearch(&cursor);
  bar->addWidget(search);
  bar->addWidget(new RecordBar(&cursor), 1);
  bar->addWidget(new UnlockButton(&cursor));
  auto* const edit = new QPushButton;
  bar->addWidget(edit);
  auto* const form = new QFormLayout;
  BoundFields fields(&cursor);
  for (const char* column : {"COMPOSER", "FIRST_NAME", "BORN"}) {
    auto* const field = new QLineEdit;
    fields.Bind(field, QString::fromUtf8(column));
    form->addRow(QString::fromUtf8(column), field);
  }
  auto* const style = new QComboBox;
  style->addItems({QStringLiteral("Baroque"), QStringLiteral("Classical")});
  fields.Bind(style, QStringLiteral("Style"));
  form->addRow(QStringLiteral("Style"), style);
  auto* const page = new EditedPage(QStringLiteral("WebBiography"), QStringLiteral("txtBiography"));
  page->Attach(edit, QStringLiteral("Preview Composer Biography"),
               QStringLiteral("Edit Composer Biography(HTML)"));
  auto* const tunes = new TuneList(QStringLiteral("gridMelodies"));
  tunes->SetEmptyText(QStringLiteral("No tunes of this composer."));
  auto* const middle = new QHBoxLayout;
  middle->setSpacing(spacing::kMedium);
  middle->addLayout(form, 1);
  middle->addWidget(page, 2);
  column_.addLayout(bar);
  column_.addLayout(middle, 2);
  column_.addWidget(tunes, 1);
  const auto show = [&] {
    page->ShowPageOf(cursor.Key().toString());
    tunes->Load(
        Library(),
        QStringLiteral("SELECT title, Category,SoloInstrument,Ensemble,Style,Length,Tempo,codename FROM "
                       "tblmelodies WHERE composer = %1 ORDER BY category, title")
            .arg(InStatement(cursor.Key())));
  };
  QObject::connect(&cursor, &RecordCursor::AnotherRecord, show);

  ASSERT_TRUE(cursor.Find(QStringLiteral("Beethoven")));
  ASSERT_GT(tunes->Tunes().rowCount(), 0);
  tunes->SetPlaying(tunes->Tunes().CodeName(0));
  Look("records-locked");

  cursor.Unlock();
  page->SetEditable(true);
  page->Flip();
  tunes->SetPlaying({});
  Look("records-edited");
  page->Discard();

  cursor.MoveNext();
  tunes->Clear();
  Look("records-no-tunes");
}

TEST_P(Gallery, ATreeOfTunes) {
  auto* const tree = new TuneTree(QStringLiteral("TreeListening"));
  auto* const button = new QPushButton;
  tree->Attach(button, QStringLiteral("Expand all top-level branches"),
               QStringLiteral("Contract all top-level branches"));
  column_.addWidget(button, 0, Qt::AlignLeft);
  column_.addWidget(tree, 1);
  tree->SetTuneKeys({QStringLiteral("XX"), {QStringLiteral("XXX"), QStringLiteral("XXC")}});
  const auto tunes = [](const char* column, const char* key) {
    return TreeLevel{
        QStringLiteral("select CodeName,Title,Composer,length,ensemble FROM tblMelodies WHERE %1 = {parent} "
                       "ORDER BY Title")
            .arg(QString::fromUtf8(column)),
        QStringLiteral("{Title}[  by {Composer}] - {Length} - {Ensemble}"), QString::fromUtf8(key)};
  };
  tree->Model().Begin(QStringLiteral("Top"), QStringLiteral("Zelmar"),
                      {{QStringLiteral("Composers"),
                        QStringLiteral("Alphabetical list of composers"),
                        {{QStringLiteral("select COMPOSER,FIRST_NAME from tblComposer Order by COMPOSER"),
                          QStringLiteral("{COMPOSER}, {FIRST_NAME}"),
                          QStringLiteral("{COMPOSER}"),
                          QStringLiteral("COMPOSER"),
                          {},
                          {},
                          {tunes("Composer", "XXX{CodeName}")}}}},
                       {QStringLiteral("Categories"),
                        QStringLiteral("Categories of Music"),
                        {{QStringLiteral("select Category from tblCategory ORDER BY Category"),
                          QStringLiteral("{Category}"),
                          QStringLiteral("C{Category}"),
                          QStringLiteral("Category"),
                          {},
                          {},
                          {tunes("Category", "XXC{CodeName}")}}}}},
                      Library());
  button->click();
  Look("tree");
  Find<QLineEdit>(*tree, "txtFind").setText(QStringLiteral("elise"));
  ASSERT_TRUE(TextOf(*tree, "lblMatches").startsWith(QStringLiteral("1 of ")));
  Look("tree-search");
}

TEST_P(Gallery, APrintedList) {
  PrintedList list;
  list.title = QStringLiteral("Zelmar database by Composer");
  list.database_title = QStringLiteral("Zelmar Tunes and Themes");
  list.date = QDate(2025, 3, 7);
  list.group_heading = QStringLiteral("Composer");
  list.columns = {{QStringLiteral("Title"), 3.0},
                  {QStringLiteral("Period"), 1.2},
                  {QStringLiteral("Category"), 1.4},
                  {QStringLiteral("Ensemble"), 1.4}};
  const auto shape = Recordset::OpenStatement(
      Library(),
      QStringLiteral(
          "SHAPE {SELECT * FROM `tblComposer` ORDER BY COMPOSER}  AS cmdComposer  APPEND ({select "
          "Composer,Title, Style, category, ensemble from tblmelodies order by title}  AS cmdMelodies RELATE "
          "'COMPOSER' TO 'Composer') AS cmdMelodies"));
  list.groups = GroupsOfShape(*shape, QStringLiteral("COMPOSER"), QStringLiteral("cmdMelodies"),
                              {QStringLiteral("Title"), QStringLiteral("Style"), QStringLiteral("Category"),
                               QStringLiteral("Ensemble")});
  list.groups.front().rows.push_back(
      {QStringLiteral("A title that is so long that it does not fit into its column and "
                      "has to be wrapped, since nobody can read what is cut off"),
       QStringLiteral("Baroque"), QStringLiteral("Concerto"), QStringLiteral("Orchestra")});
  column_.setContentsMargins(0, 0, 0, 0);
  auto* const preview = new ListPreview(list);
  column_.addWidget(preview);
  while (!preview->Layout().Finished()) QCoreApplication::processEvents();
  Look("list");
  preview->Canvas().SetFit(PageCanvas::Fit::kWholePage);
  Find<QLineEdit>(*preview, "txtFind").setText(QStringLiteral("baroque"));
  Look("list-search");
  // Paper looks the same in either scheme.
  const QString folder = qEnvironmentVariable("ZELMAR_PICTURES", directory_.Path());
  platform_.files->answers = {folder + QStringLiteral("/list.pdf")};
  preview->SavePdf();
  EXPECT_GT(QFileInfo(folder + QStringLiteral("/list.pdf")).size(), 1000);
}

INSTANTIATE_TEST_SUITE_P(InBothSchemes, Gallery, ::testing::Values(ColourScheme::kLight, ColourScheme::kDark),
                         [](const auto& scheme) {
                           return scheme.param == ColourScheme::kDark ? "Dark" : "Light";
                         });

}  // namespace
}  // namespace zelmar
