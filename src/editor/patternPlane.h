// The two cuts of an antenna in the editor, and all in which they differ there.
#pragma once

#include "preview/polarPlot.h"

namespace vantrelix {

struct PatternPlane {
  Plane plane;
  const char* prefix;  // of the table's name
  const char* angleField;
  const char* gainField;
  // Names of the widgets.
  const char* grid;
  const char* frame;
  const char* progress;
  const char* thumbnailFrame;
  const char* thumbnail;
  // Captions.
  const char* thumbnailCaption;
  const char* angleCaption;    // of the grid's column
  const char* frameCaption;    // the antenna's name follows
  const char* loadingCaption;  // the same, while it is read
  // The limits of an angle, in degrees; the lower one may be taken, the upper one where `takesHighest`.
  double lowest;
  double highest;
  bool takesHighest;
  const char* angleTitle;
  const char* angleText;
  const char* gainText;
  const char* gainHint;

  bool allows(double angle) const { return angle >= lowest && (angle < highest || (takesHighest && angle == highest)); }
};

const PatternPlane& patternPlane(Plane plane);

}  // namespace vantrelix
