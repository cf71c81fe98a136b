// The window of a printed list.
#pragma once

#include "model/printed_list.h"
#include "shell/child_window.h"

namespace zelmar {

class ListPreview;

class ListPreviewWindow : public ChildWindow {
  Q_OBJECT

 public:
  // The title of the list is part of the caption.
  ListPreviewWindow(const QString& system_name, PrintedList list);

  ListPreview& Preview() { return *preview_; }

 private:
  ListPreview* preview_;
};

}  // namespace zelmar
