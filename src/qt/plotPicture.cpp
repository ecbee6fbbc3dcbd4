#include "qt/plotPicture.h"

#include <algorithm>
#include <memory>

#include <QBuffer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

#include "platform/Platform.h"
#include "platform/RunTimeFailure.h"
#include "qt/PictureView.h"
#include "qt/plotFile.h"
#include "qt/qtText.h"
#include "qt/screenless.h"

namespace vantrelix::qt {

namespace {

constexpr int kLeastPixels = 1600;
constexpr int kNaturalDotsPerInch = 192;
constexpr int kTwipsPerPoint = 20;
constexpr double kTwipsPerInchOfPage = 1440;
constexpr double kPenTwips = 18;
constexpr int kInvalidCall = 5;

void drawText(QPainter& painter, const PlotPage::Text& text) {
  QFont font;
  font.setPixelSize(std::max(text.size, 1));
  font.setBold(text.bold);
  painter.setFont(font);
  painter.setPen(Qt::black);
  painter.drawText(QPointF(text.x, text.baseline), toQt(text.text));
}

void drawBox(QPainter& painter, const PictureBox& picture) {
  const Rectangle& place = picture.geometry();
  const QRectF box(place.left, place.top, place.width, place.height);
  // Pens are measured on the device, so that they stay even; here in twips of the page.
  const double devicePerTwip = painter.deviceTransform().m11();
  drawPicture(painter, box, picture, kPenTwips * devicePerTwip);
  QPen frame(QColor(168, 168, 168), kPenTwips / 2);
  painter.setPen(frame);
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(box);
}

QByteArray pngOf(const PlotPage& page) {
  const double natural = page.width * kNaturalDotsPerInch / kTwipsPerInchOfPage;
  const double scale = std::max<double>(natural, kLeastPixels) / page.width;
  QImage image(qCeil(page.width * scale), qCeil(page.height * scale), QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  painter.scale(scale, scale);
  drawPage(painter, page);
  painter.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return bytes;
}

QByteArray pdfOf(const PlotPage& page) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setCreator("Vantrelix");
  writer.setPageSize(
      QPageSize(QSizeF(page.width, page.height) / kTwipsPerPoint, QPageSize::Point, {}, QPageSize::ExactMatch));
  writer.setPageMargins(QMarginsF());
  QPainter painter(&writer);
  painter.scale(writer.resolution() / kTwipsPerInchOfPage, writer.resolution() / kTwipsPerInchOfPage);
  drawPage(painter, page);
  painter.end();
  return bytes;
}

QByteArray pictureOf(const PlotPage& page, const QString& path) {
  const QString ending = QFileInfo(path).suffix().toLower();
  if (ending == "png") return pngOf(page);
  if (ending == "pdf") return pdfOf(page);
  throw RunTimeFailure(kInvalidCall,
                       "No picture can be written to " + fromQt(path) + ": the name must end in .png or .pdf.");
}

}  // namespace

void drawPage(QPainter& painter, const PlotPage& page) {
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  for (const auto& picture : page.pictures) drawBox(painter, *picture);
  for (const PlotPage::Text& text : page.texts) drawText(painter, text);
}

void writePlotPicture(const PlotPage& page, const QString& path) {
  if (page.width <= 0 || page.height <= 0) throw RunTimeFailure(kInvalidCall, "The plot has no size.");
  const QByteArray bytes = pictureOf(page, path);
  platform::replaceWholeFile(platform::current().fromMachine(fromQt(path)),
                             std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

void writePlotFile(const PlotPage& page, const std::string& machinePath) {
  std::unique_ptr<QGuiApplication> application;
  char name[] = "vantrelix";
  char* arguments[] = {name, nullptr};
  int count = 1;
  if (!QCoreApplication::instance()) {
    goScreenless();
    application = std::make_unique<QGuiApplication>(count, arguments);
  }
  writePlotPicture(page, toQt(machinePath));
}

}  // namespace vantrelix::qt
