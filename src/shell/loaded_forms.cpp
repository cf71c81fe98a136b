#include "shell/loaded_forms.h"

#include <QPointer>
#include <utility>

namespace zelmar {

namespace {

QList<QPointer<QWidget>>& Forms() {
  static QList<QPointer<QWidget>> forms;
  return forms;
}

std::function<void()>& Listener() {
  static std::function<void()> listener;
  return listener;
}

}  // namespace

void AddLoadedForm(QWidget* form) {
  Forms().append(form);
  // Its going moves the places of those behind it.
  QObject::connect(form, &QObject::destroyed, [form] { RemoveLoadedForm(form); });
}

void RemoveLoadedForm(QWidget* form) {
  Forms().removeAll(form);
  TellFormsChanged();
}

QList<QWidget*> LoadedForms() {
  Forms().removeIf([](const QPointer<QWidget>& form) { return form.isNull(); });
  QList<QWidget*> result;
  for (const auto& form : Forms()) result.append(form);
  return result;
}

bool IsFormLoaded(const QWidget* form) {
  return form != nullptr && LoadedForms().contains(const_cast<QWidget*>(form));
}

QWidget* FindLoadedForm(const QString& name) {
  for (QWidget* form : LoadedForms())
    if (form->objectName() == name) return form;
  return nullptr;
}

void SetFormsListener(std::function<void()> listener) {
  Listener() = std::move(listener);
}

void TellFormsChanged() {
  if (Listener()) Listener()();
}

}  // namespace zelmar
