// How the lookup controls use the width that a host gives them.
#pragma once

#include "ui/Widget.h"

namespace vantrelix {

// The description goes to the right edge; the file and the ID under it share its width. Twips.
inline void stretchDescription(Widget& description, Widget& file, Widget& id, int controlWidth) {
  constexpr int kRightMargin = 60, kGap = 30;
  Rectangle whole = description.geometry(), left = file.geometry(), right = id.geometry();
  whole.width = controlWidth - whole.left - kRightMargin;
  left.width = whole.width / 2 - kGap;
  right.width = left.width;
  right.left = left.right() + kGap;
  description.setGeometry(whole);
  file.setGeometry(left);
  id.setGeometry(right);
}

}  // namespace vantrelix
