// A line of text that is tested when it is left and on Enter. See FieldCheck for the ways in which it is
// left.
//
//   txtTempo_->Check().SetRules({{typed::Numeric(), ...}, {typed::Within(20, 500), ...}});
//   txtTempo_->Check().SetStore(StoreRounded<std::int16_t>([](std::int16_t tempo) { ... }));
//
// setText shows a value of the program; it is not tested.
#pragma once

#include <QLineEdit>

namespace zelmar {

class FieldCheck;

class CheckedField : public QLineEdit {
  Q_OBJECT

 public:
  explicit CheckedField(QWidget* parent = nullptr);
  ~CheckedField() override;

  FieldCheck& Check() const { return *check_; }
  // As if a person had typed the text and pressed Enter: for spin buttons. False when it is refused.
  bool Enter(const QString& text);

 private:
  FieldCheck* check_;
};

}  // namespace zelmar
