// The dialogs that ask for files.
#pragma once

#include <string>

#include <QWidget>

#include "ui/Desktop.h"

namespace vantrelix::qt {

// As Desktop::openFiles and Desktop::saveFile, over a window; without one, alone on the screen.
std::string askFilesToOpen(const Desktop::OpenFiles& request, QWidget* over);
std::string askFileToSave(const Desktop::SaveFile& request, QWidget* over);

}  // namespace vantrelix::qt
