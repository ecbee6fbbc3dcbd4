// A plot page through Qt's painter. Needs a QGuiApplication for its fonts.
#pragma once

#include <QString>

#include "preview/svgPlot.h"

class QPainter;

namespace vantrelix::qt {

// Draws the page; one unit of the painter is a twip.
void drawPage(QPainter& painter, const PlotPage& page);

// As writePlotFile.
void writePlotPicture(const PlotPage& page, const QString& path);

}  // namespace vantrelix::qt
