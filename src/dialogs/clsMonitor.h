// One screen: its handle, its bounds and its work area, in pixels. Nothing ties the sides to one another; each is what
// was put.
#pragma once

#include "ui/MonitorPort.h"

namespace vantrelix {

class clsMonitor {
 public:
  clsMonitor() = default;
  clsMonitor(MonitorHandle handle, const MonitorInfo& info);

  MonitorHandle Handle() const { return handle_; }
  void Handle(MonitorHandle handle) { handle_ = handle; }
  int Height() const { return height_; }
  void Height(int pixels) { height_ = pixels; }
  int Width() const { return width_; }
  void Width(int pixels) { width_ = pixels; }
  int Left() const { return left_; }
  void Left(int pixels) { left_ = pixels; }
  int Right() const { return right_; }
  void Right(int pixels) { right_ = pixels; }
  int Top() const { return top_; }
  void Top(int pixels) { top_ = pixels; }
  int Bottom() const { return bottom_; }
  void Bottom(int pixels) { bottom_ = pixels; }
  int WorkLeft() const { return workLeft_; }
  void WorkLeft(int pixels) { workLeft_ = pixels; }
  int WorkRight() const { return workRight_; }
  void WorkRight(int pixels) { workRight_ = pixels; }
  int WorkTop() const { return workTop_; }
  void WorkTop(int pixels) { workTop_ = pixels; }
  int WorkBottom() const { return workBottom_; }
  void WorkBottom(int pixels) { workBottom_ = pixels; }

 private:
  MonitorHandle handle_ = 0;
  int height_ = 0, width_ = 0, left_ = 0, right_ = 0, top_ = 0, bottom_ = 0;
  int workLeft_ = 0, workRight_ = 0, workTop_ = 0, workBottom_ = 0;
};

}  // namespace vantrelix
