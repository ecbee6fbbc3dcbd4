// A place on a host's form for an antenna preview, without behaviour: it shows nothing and does nothing.
#pragma once

#include <string>

#include "ui/UserControl.h"

namespace vantrelix {

class scAntPreview : public UserControl {
 public:
  explicit scAntPreview(std::string name = "scAntPreview") : UserControl(std::move(name)) {
    setBackColor(color::buttonFace);
    setSize(kStartWidth, kStartHeight);
  }

 private:
  static constexpr int kStartWidth = 4800, kStartHeight = 3600;  // twips
};

}  // namespace vantrelix
