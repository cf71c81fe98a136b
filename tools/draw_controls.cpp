// draw_controls <output folder>: pictures of the controls that all windows share, in the light and the dark
// scheme, so that a change of their looks can be looked at.

#include <QApplication>
#include <QButtonGroup>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>
#include <cstdio>

#include "model/globals.h"
#include "platform/widgets/spacing.h"
#include "platform/widgets/widget_services.h"
#include "shell/bars_across_row.h"
#include "shell/cell_grid.h"
#include "shell/checked_field.h"
#include "shell/entry_combo.h"
#include "shell/field_check.h"
#include "shell/modal_dialog.h"
#include "shell/table_model.h"
#include "shell/theme.h"

namespace {

using namespace zelmar;

constexpr QSize kWindow(1024, 768);
constexpr int kRestMilliseconds = 100;

void Rest() {
  QEventLoop loop;
  QTimer::singleShot(kRestMilliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

std::vector<FieldRule> NumberRules(double from, double to) {
  return {{typed::Numeric(), MessageIcon::kExclamation, QStringLiteral("Please type a number here"),
           QStringLiteral("It must be numeric.")},
          {typed::Within(from, to),
           MessageIcon::kExclamation,
           {},
           QStringLiteral("It must be between %1 and %2.").arg(from).arg(to)}};
}

struct ThemeRow {
  int number;
  QString notes;
  int start;
  int instrument;
};

// Two tables, one above the other: the cells of one are changed in place.
class Tables {
 public:
  explicit Tables(QWidget* parent)
      : cells(new CellGrid(parent)), events(new PlainGrid(parent)), nothing(new PlainGrid(parent)) {
    static const char* const kNotes[] = {"The opening", "Second subject, in the dominant", "Return"};
    std::vector<ThemeRow> rows;
    for (int i = 0; i < 3; ++i) rows.push_back({i + 1, QLatin1String(kNotes[i]), i * 16 + 1, i * 8});
    themes_.SetContent(rows);
    events_.SetContent(std::vector<ThemeRow>(4000, rows[1]));
    CellColumn notes{.column = 1};
    notes.store = StoreTo([](ThemeRow& row, const QString& text) { row.notes = text; });
    CellColumn start{.column = 2};
    start.rules = NumberRules(1, 64);
    start.store = StoreTo([](ThemeRow& row, const QString& text) { row.start = text.toInt(); });
    CellColumn instrument{.column = 3};
    instrument.store = StoreTo([](ThemeRow& row, const QString& text) { row.instrument = text.toInt(); });
    instrument.choice = CellChoice{[] { return InstrumentEntries(128); },
                                   [this](int row) { return themes_.At(row).instrument; }};
    CellColumn number{.column = 0};
    number.why_not = Refusal{MessageIcon::kInformation, QStringLiteral("You can't change this"),
                             QStringLiteral("The number is the place of the theme.")};
    GridSetup setup;
    setup.stretched = 1;
    cells->SetUp(&themes_, setup, {number, notes, start, instrument});
    setup.selecting = Selecting::kRowRange;
    events->SetUp(&events_, setup);
    events->sortByColumn(2, Qt::AscendingOrder);
    setup.when_empty = QStringLiteral("No events match your selection.");
    nothing->SetUp(&none_, setup);
  }

  CellGrid* cells;
  PlainGrid* events;
  PlainGrid* nothing;

 private:
  std::function<void(int, const QString&)> StoreTo(std::function<void(ThemeRow&, const QString&)> store) {
    return [this, store = std::move(store)](int row, const QString& text) {
      ThemeRow changed = themes_.At(row);
      store(changed, text);
      themes_.SetRow(row, std::move(changed));
    };
  }
  static std::vector<RowColumn<ThemeRow>> Columns() {
    return {{QStringLiteral("Theme No"), [](const ThemeRow& row) { return row.number; }, Qt::AlignRight, 6},
            {QStringLiteral("Theme Notes"), [](const ThemeRow& row) { return row.notes; }, Qt::AlignLeft, 20},
            {QStringLiteral("Start Bar"), [](const ThemeRow& row) { return row.start; }, Qt::AlignRight, 8},
            {QStringLiteral("Instrument Name"),
             [](const ThemeRow& row) {
               return Global().InstrumentNames[static_cast<std::size_t>(row.instrument)];
             },
             Qt::AlignLeft, 22}};
  }

  RowsModel<ThemeRow> themes_{Columns()};
  RowsModel<ThemeRow> events_{Columns()};
  RowsModel<ThemeRow> none_{Columns()};
};

QGroupBox* Radios(QWidget* parent) {
  auto* const box = new QGroupBox(QStringLiteral("Apply entered dynamics to"), parent);
  auto* const column = new QVBoxLayout(box);
  for (const char* words : {"This track only", "All tracks", "Not to be chosen"})
    column->addWidget(new QRadioButton(QLatin1String(words), box));
  auto* const first = qobject_cast<QRadioButton*>(column->itemAt(0)->widget());
  first->setChecked(true);
  column->itemAt(2)->widget()->setEnabled(false);
  return box;
}

class Gallery : public QWidget {
 public:
  Gallery() : tables(this) {
    auto* const form = new QGridLayout;
    form->setHorizontalSpacing(spacing::kMedium);
    form->setVerticalSpacing(spacing::kSmall);
    auto* const field = new CheckedField(this);
    field->setText(QStringLiteral("120"));
    field->Check().SetRules(NumberRules(20, 500));
    Add(*form, "Tempo", field);
    auto* const none = new EntryCombo(Typing::kNone, this);
    none->SetEntries(InstrumentEntries(128));
    none->SelectNumber(40);
    Add(*form, "Instrument", none);
    auto* const typed = new EntryCombo(Typing::kFree, this);
    typed->SetEntries({{QStringLiteral("Bach")}, {QStringLiteral("Beethoven")}});
    typed->SetText(QStringLiteral("Beethoven"));
    Add(*form, "Composer", typed);
    auto* const disabled = new EntryCombo(Typing::kNone, this);
    disabled->setEnabled(false);
    Add(*form, "No bank", disabled);
    in_focus = new EntryCombo(Typing::kFree, this);
    in_focus->SetText(QStringLiteral("With the keyboard"));
    Add(*form, "Style", in_focus);
    bars = new BarsAcrossRow(this);
    bars->SetBarsAcross(3);
    form->addWidget(bars, form->rowCount(), 1);
    form->setColumnStretch(1, 1);
    auto* const top = new QHBoxLayout;
    top->setSpacing(spacing::kWide);
    top->addLayout(form, 2);
    top->addWidget(Radios(this), 1);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kWide);
    column->setSpacing(spacing::kMedium);
    column->addLayout(top);
    column->addWidget(tables.cells, 2);
    column->addWidget(tables.events, 2);
    column->addWidget(tables.nothing, 1);
    resize(kWindow);
  }

  Tables tables;
  EntryCombo* in_focus = nullptr;
  BarsAcrossRow* bars = nullptr;

 private:
  void Add(QGridLayout& form, const char* words, QWidget* control) {
    const int row = form.rowCount();
    form.addWidget(new QLabel(QLatin1String(words), this), row, 0);
    form.addWidget(control, row, 1);
  }
};

class SampleDialog : public ModalDialog {
 public:
  SampleDialog() : ModalDialog(QStringLiteral("dialogSample"), QStringLiteral("Note Editing"), nullptr) {
    auto* const form = MakeForm();
    auto* const bar = MakeField("txtBar");
    bar->setText(QStringLiteral("12"));
    AddRow(form, MakeLabel(QStringLiteral("&Bar"), bar), bar);
    auto* const remove = MakeButton("cmdDelete", QStringLiteral("&Delete Note"), {});
    auto* const save = MakeButton("cmdOK", QStringLiteral("&Save"), {});
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(spacing::kWide, spacing::kWide, spacing::kWide, spacing::kLarge);
    column->setSpacing(spacing::kLarge);
    column->addLayout(form);
    column->addLayout(MakeButtonRow(save, {remove}, {"cmdCancel", QStringLiteral("&Cancel"), {}}));
    resize(520, sizeHint().height());
  }
};

bool Save(QWidget& window, const QDir& folder, const QString& name) {
  Rest();
  if (window.grab().save(folder.filePath(name), "PNG")) return true;
  std::fprintf(stderr, "draw_controls: %s cannot be saved\n", qPrintable(name));
  return false;
}

bool DrawAll(const QDir& folder, const QString& scheme) {
  Gallery gallery;
  gallery.show();
  gallery.activateWindow();
  Rest();
  gallery.tables.events->selectionModel()->select(
      QItemSelection(gallery.tables.events->model()->index(1, 0),
                     gallery.tables.events->model()->index(3, 0)),
      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  gallery.tables.cells->setCurrentIndex(gallery.tables.cells->model()->index(1, 1));
  gallery.tables.cells->setFocus();
  bool saved = Save(gallery, folder, QStringLiteral("controls-cell-%1.png").arg(scheme));
  gallery.tables.cells->EditCell();
  saved = Save(gallery, folder, QStringLiteral("controls-edit-%1.png").arg(scheme)) && saved;
  gallery.in_focus->setFocus();
  saved = Save(gallery, folder, QStringLiteral("controls-field-%1.png").arg(scheme)) && saved;
  gallery.tables.events->setFocus();
  gallery.tables.events->selectRow(2);
  saved = Save(gallery, folder, QStringLiteral("controls-rows-%1.png").arg(scheme)) && saved;
  SampleDialog dialogue;
  dialogue.show();
  return Save(dialogue, folder, QStringLiteral("controls-dialogue-%1.png").arg(scheme)) && saved;
}

}  // namespace

int main(int argc, char** argv) {
  const bool draws = argc > 1;
  if (draws && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  InstallWidgetServices();
  for (std::size_t i = 0; i < Global().InstrumentNames.size(); ++i)
    Global().InstrumentNames[i] = QStringLiteral("Instrument %1").arg(i);
  if (!draws) {
    ApplyTheme(application, SystemColourScheme(application));
    Gallery gallery;
    gallery.show();
    return QApplication::exec();
  }
  const QDir folder(QDir(QString::fromLocal8Bit(argv[1])).absolutePath());
  bool saved = true;
  for (const ColourScheme scheme : {ColourScheme::kLight, ColourScheme::kDark}) {
    ApplyTheme(application, scheme);
    saved =
        DrawAll(folder, scheme == ColourScheme::kDark ? QStringLiteral("dark") : QStringLiteral("light")) &&
        saved;
  }
  return saved ? 0 : 1;
}
