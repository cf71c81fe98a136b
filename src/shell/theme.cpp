#include "shell/theme.h"

#include <QApplication>
#include <QPalette>

#include "platform/widgets/icons.h"
#include "shell/frame_style.h"
#include "shell/theme_controls.h"

namespace zelmar {

namespace {

struct Colours {
  const char* window;
  const char* surface;
  const char* raised;
  const char* text;
  const char* muted;
  const char* disabled;
  const char* border;   // of what needs none to be recognised
  const char* outline;  // of fields and handles: 3 to 1 at least against everything that they stand on
  const char* hover;
  const char* accent;
  const char* on_accent;
  const char* link;
  const char* tick;
  const char* open_list;
};

constexpr Colours kLightColours = {.window = "#f3f4f7",
                                   .surface = "#ffffff",
                                   .raised = "#ffffff",
                                   .text = "#1c2026",
                                   .muted = "#5c6572",
                                   .disabled = "#7d8592",
                                   .border = "#d4d8df",
                                   .outline = "#7d8592",
                                   .hover = "#e6e9f2",
                                   .accent = "#3a5bd0",
                                   .on_accent = "#ffffff",
                                   .link = "#2f4fc4",
                                   .tick = "check_light.svg",
                                   .open_list = "open_list_light.svg"};
constexpr Colours kDarkColours = {.window = "#1b1d22",
                                  .surface = "#23262c",
                                  .raised = "#2b2f37",
                                  .text = "#e7e9ed",
                                  .muted = "#a2a9b5",
                                  .disabled = "#7a8290",
                                  .border = "#3b404a",
                                  .outline = "#7f8795",
                                  .hover = "#343a46",
                                  .accent = "#8aa2ff",
                                  .on_accent = "#12151c",
                                  .link = "#9db1ff",
                                  .tick = "check_dark.svg",
                                  .open_list = "open_list_dark.svg"};

QPalette PaletteOf(const Colours& colours) {
  QPalette palette;
  const auto set = [&palette](QPalette::ColorRole role, const char* colour) {
    palette.setColor(role, QColor(QLatin1String(colour)));
  };
  set(QPalette::Window, colours.window);
  set(QPalette::WindowText, colours.text);
  set(QPalette::Base, colours.surface);
  set(QPalette::AlternateBase, colours.window);
  set(QPalette::Text, colours.text);
  set(QPalette::PlaceholderText, colours.muted);
  set(QPalette::Button, colours.raised);
  set(QPalette::ButtonText, colours.text);
  set(QPalette::BrightText, colours.on_accent);
  set(QPalette::Highlight, colours.accent);
  set(QPalette::HighlightedText, colours.on_accent);
  set(QPalette::ToolTipBase, colours.raised);
  set(QPalette::ToolTipText, colours.text);
  set(QPalette::Link, colours.link);
  set(QPalette::LinkVisited, colours.link);
  set(QPalette::Light, colours.raised);
  set(QPalette::Midlight, colours.hover);
  set(QPalette::Mid, colours.border);
  set(QPalette::Dark, colours.border);
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
    palette.setColor(QPalette::Disabled, role, QColor(QLatin1String(colours.disabled)));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(QLatin1String(colours.border)));
  return palette;
}

QString StyleSheetOf(const Colours& colours) {
  QString sheet = QStringLiteral(R"(
QMenuBar { background: @surface; border-bottom: 1px solid @border; padding: 2px 6px; }
QMenuBar::item { padding: 5px 10px; border-radius: 5px; background: transparent; }
QMenuBar::item:selected { background: @accent; color: @on_accent; }
QMenuBar > zelmar--ElidedButton { text-align: left; }
QToolButton { border: none; border-radius: 5px; padding: 0; margin: 0; }
QMenuBar > QToolButton:hover { background: @hover; }
QMenuBar > QToolButton:pressed { background: @hover; border: 2px solid @accent; }
QMenuBar > QToolButton::menu-indicator { image: none; }
QMenu { background: @raised; border: 1px solid @border; padding: 5px; }
QMenu::item { padding: 5px 28px 5px 24px; border-radius: 4px; }
QMenu::item:selected { background: @accent; color: @on_accent; }
QMenu::item:disabled { color: @disabled; }
QMenu::item:selected:disabled { background: @hover; color: @muted; border: 1px solid @accent; }
QMenu::separator { height: 1px; background: @border; margin: 5px 8px; }
QMenu::indicator { width: 13px; height: 13px; left: 6px; }
QToolTip { background: @raised; color: @text; border: 1px solid @border; padding: 5px 7px; }
QPushButton { background: @raised; border: 1px solid @outline; border-radius: 6px; padding: 6px 16px;
              min-height: 18px; }
QPushButton:hover { background: @hover; }
QPushButton:pressed { background: @border; }
QPushButton:focus { border: 2px solid @accent; padding: 5px 15px; outline: none; }
QPushButton:disabled { color: @disabled; background: @window; border-color: @border; }
QPushButton:default { background: @accent; color: @on_accent; border-color: @accent; }
QPushButton:default:focus { border-color: @text; }
QPushButton:default:disabled { background: @border; color: @disabled; border-color: @border; }
zelmar--ElidedButton { text-align: left; }
QToolButton { border: 1px solid transparent; border-radius: 6px; padding: 4px 7px; background: transparent; }
QToolButton:hover:enabled { background: @hover; }
QToolButton:pressed { background: @border; }
QToolButton:focus { border: 2px solid @accent; padding: 3px 6px; outline: none; }
QToolButton:disabled { color: @disabled; }
QLineEdit { background: @surface; border: 1px solid @outline; border-radius: 6px; padding: 6px 8px; }
QLineEdit:read-only { background: @window; }
QLineEdit:focus { border: 2px solid @accent; padding: 5px 7px; }
QPlainTextEdit { background: @surface; border: 1px solid @outline; border-radius: 6px; padding: 2px 4px; }
QPlainTextEdit:focus { border: 2px solid @accent; padding: 1px 3px; }
QComboBox { background: @surface; border: 1px solid @outline; border-radius: 6px; padding: 6px 8px; }
QComboBox:focus { border: 2px solid @accent; padding: 5px 7px; }
QComboBox:disabled { color: @disabled; background: @window; }
QComboBox::drop-down { border: none; width: 26px; }
QComboBox::down-arrow { image: url(:/icons/@open_list); width: 14px; height: 14px; }
QAbstractItemView { background: @surface; border: 1px solid @outline; border-radius: 6px; outline: 0; }
QAbstractItemView:focus { border-color: @accent; }
QListView::item { padding: 4px 8px; border: 1px solid transparent; }
QListView::item:selected { background: @accent; color: @on_accent; }
QListView::item:hover:!selected { background: @hover; }
QTreeView::item { padding: 4px 2px; }
QTreeView::item:selected { background: @accent; color: @on_accent; }
QTreeView::item:hover:!selected { background: @hover; }
QTextBrowser { background: @surface; border: 1px solid @outline; border-radius: 6px; }
QTextBrowser:focus { border-color: @accent; }
QTabWidget::pane { border: none; top: 4px; }
QTabBar::tab { background: transparent; padding: 6px 14px; border: none; border-bottom: 2px solid @border; }
QTabBar::tab:selected { border-bottom-color: @accent; }
QTabBar::tab:hover:!selected { background: @hover; }
QTabBar::tab:focus { color: @accent; background: @hover; }
QSplitter::handle { background: transparent; }
QScrollBar { background: transparent; }
QScrollBar:vertical { width: 12px; }
QScrollBar:horizontal { height: 12px; }
QScrollBar::handle { background: @outline; border-radius: 4px; margin: 2px; }
QScrollBar::handle:vertical { min-height: 28px; }
QScrollBar::handle:horizontal { min-width: 28px; }
QScrollBar::handle:hover { background: @muted; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QProgressBar { background: @border; border: none; border-radius: 4px; max-height: 8px; min-height: 8px; }
QProgressBar::chunk { background: @accent; border-radius: 4px; }
QSlider:horizontal { min-height: 20px; }
QSlider::groove:horizontal { height: 4px; border-radius: 2px; background: @outline; }
QSlider::groove:horizontal:disabled { background: @border; }
QSlider::sub-page:horizontal { background: @accent; border-radius: 2px; }
QSlider::sub-page:horizontal:disabled { background: @border; }
QSlider::handle:horizontal { width: 14px; height: 14px; margin: -5px 0; border-radius: 7px; background: @accent; }
QSlider::handle:horizontal:disabled { background: @disabled; }
QSlider::handle:horizontal:focus { border: 2px solid @text; width: 14px; height: 14px; margin: -7px 0;
                                   border-radius: 9px; }
QCheckBox { spacing: 7px; }
QCheckBox:disabled { color: @disabled; }
QCheckBox::indicator { width: 15px; height: 15px; border: 1px solid @muted; border-radius: 4px;
                       background: @surface; }
QCheckBox::indicator:hover { border-color: @accent; }
QCheckBox::indicator:checked { background: @accent; border-color: @accent; image: url(:/icons/@tick); }
QCheckBox::indicator:focus { border: 2px solid @accent; width: 13px; height: 13px; }
QCheckBox::indicator:checked:focus { border-color: @text; }
QCheckBox::indicator:disabled { border-color: @border; background: @window; }
QDialogButtonBox, QMessageBox { dialogbuttonbox-buttons-have-icons: 0; }
QMdiArea { border: none; }
)");
  const std::pair<const char*, const char*> names[] = {
      {"@surface", colours.surface},    {"@raised", colours.raised},       {"@text", colours.text},
      {"@window", colours.window},      {"@hover", colours.hover},         {"@disabled", colours.disabled},
      {"@border", colours.border},      {"@on_accent", colours.on_accent}, {"@accent", colours.accent},
      {"@muted", colours.muted},        {"@outline", colours.outline},     {"@tick", colours.tick},
      {"@open_list", colours.open_list}};
  for (const auto& [name, colour] : names) sheet.replace(QLatin1String(name), QLatin1String(colour));
  return sheet;
}

}  // namespace

ColourScheme SystemColourScheme(const QApplication& application) {
  const QByteArray wish = qgetenv("ZELMAR_COLOUR_SCHEME").toLower();
  if (wish == "dark") return ColourScheme::kDark;
  if (wish == "light") return ColourScheme::kLight;
  const QPalette palette = application.palette();
  const bool dark =
      palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
  return dark ? ColourScheme::kDark : ColourScheme::kLight;
}

void FollowSystemTheme(QApplication& application) {
  // Without a palette of our own the application has the system's.
  application.setPalette(QPalette());
  ApplyTheme(application, SystemColourScheme(application));
}

void ApplyTheme(QApplication& application, ColourScheme scheme) {
  const Colours& colours = scheme == ColourScheme::kDark ? kDarkColours : kLightColours;
  application.setStyle(new FrameStyle);
  application.setPalette(PaletteOf(colours));
  InitialiseIcons();
  application.setWindowIcon(IconOf(QStringLiteral("note"), IconTone::kAccent));
  application.setStyleSheet(StyleSheetOf(colours) + ControlStyles(scheme));
}

}  // namespace zelmar
