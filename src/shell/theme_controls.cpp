#include "shell/theme_controls.h"

#include <utility>

namespace zelmar {

namespace {

// What the palette has no role for.
struct Edges {
  const char* edge;
  const char* step_up;
  const char* step_down;
  const char* chosen;
};
constexpr Edges kLight = {"#7f8693", "step_up_light.svg", "open_list_light.svg", "chosen_light.svg"};
constexpr Edges kDark = {"#7a818e", "step_up_dark.svg", "open_list_dark.svg", "chosen_dark.svg"};

constexpr char kStyles[] = R"(
QComboBox { border: 1px solid @edge; combobox-popup: 0; }
QComboBox:focus, QComboBox:on { border: 2px solid palette(highlight); padding: 5px 7px; }
QComboBox:disabled { border: 1px solid palette(mid); }
QComboBox QAbstractItemView { border: 1px solid @edge; border-radius: 0; }
QComboBox QLineEdit, QAbstractSpinBox QLineEdit { border: none; border-radius: 0; padding: 0;
                                                  background: transparent; }
QComboBox QLineEdit:focus, QAbstractSpinBox QLineEdit:focus { border: none; }

QAbstractSpinBox { background: palette(base); border: 1px solid @edge; border-radius: 6px; padding: 6px 8px; }
QAbstractSpinBox:focus { border: 2px solid palette(highlight); padding: 5px 7px; }
QAbstractSpinBox:disabled { background: palette(window); border: 1px solid palette(mid); }
QAbstractSpinBox::up-button, QAbstractSpinBox::down-button { subcontrol-origin: padding; width: 20px; border: none;
                                                             border-radius: 3px; background: transparent; }
QAbstractSpinBox::up-button { subcontrol-position: top right; }
QAbstractSpinBox::down-button { subcontrol-position: bottom right; }
QAbstractSpinBox::up-button:hover, QAbstractSpinBox::down-button:hover { background: palette(midlight); }
QAbstractSpinBox::up-arrow { image: url(:/icons/@step_up); width: 11px; height: 11px; }
QAbstractSpinBox::down-arrow { image: url(:/icons/@step_down); width: 11px; height: 11px; }
QAbstractSpinBox::up-arrow:off, QAbstractSpinBox::down-arrow:off { image: none; }

QRadioButton { spacing: 7px; padding: 2px 4px 2px 2px; border: 1px solid transparent; border-radius: 5px; }
QRadioButton:focus { border: 1px solid palette(highlight); }
QRadioButton:disabled { color: @edge; }
QRadioButton::indicator { width: 15px; height: 15px; border: 1px solid @edge; border-radius: 8px;
                          background: palette(base); }
QRadioButton::indicator:hover { border-color: palette(highlight); }
QRadioButton::indicator:checked { background: palette(highlight); border-color: palette(highlight);
                                  image: url(:/icons/@chosen); }
QRadioButton::indicator:disabled { background: palette(window); }
QRadioButton::indicator:checked:disabled { background: @edge; border-color: @edge; }

QGroupBox { border: 1px solid @edge; border-radius: 6px; margin-top: 9px; padding: 12px 8px 8px 8px; }
QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left; left: 10px; padding: 0 4px; }

QTableView { border: 1px solid @edge; border-radius: 4px; padding: 1px; gridline-color: palette(mid);
             alternate-background-color: palette(alternate-base); }
QTableView:focus { border: 2px solid palette(highlight); padding: 0; }
QTableView::item { padding: 0 3px; border: 2px solid transparent; }
QTableView::item:selected { background: palette(highlight); color: palette(highlighted-text); }
QTableView::item:focus { border: 2px solid palette(highlight); }
QTableView::item:selected:focus { border: 2px solid palette(highlighted-text); }
QTableView QLineEdit, QTableView QLineEdit:focus { border: 2px solid palette(highlight); border-radius: 0;
                                                   padding: 0 4px; background: palette(base); }
QTableView QComboBox, QTableView QComboBox:focus, QTableView QComboBox:on { border: 2px solid palette(highlight);
                                                  border-radius: 0; padding: 0 4px; background: palette(base); }
QHeaderView { background: palette(window); border: none; }
QHeaderView::section { background: palette(window); color: palette(text); border: none; padding: 5px 8px;
                       border-right: 1px solid palette(mid); border-bottom: 1px solid @edge; font-weight: 600; }
)";

}  // namespace

QString ControlStyles(ColourScheme scheme) {
  const Edges& edges = scheme == ColourScheme::kDark ? kDark : kLight;
  QString sheet = QLatin1String(kStyles);
  const std::pair<const char*, const char*> names[] = {{"@edge", edges.edge},
                                                       {"@step_up", edges.step_up},
                                                       {"@step_down", edges.step_down},
                                                       {"@chosen", edges.chosen}};
  for (const auto& [name, value] : names) sheet.replace(QLatin1String(name), QLatin1String(value));
  return sheet;
}

}  // namespace zelmar
