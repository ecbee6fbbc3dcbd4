// A splitter whose parts keep their shares of the room at any size, and come back as the user left them.
#pragma once

#include <string>
#include <vector>

#include <QSplitter>

namespace vantrelix::qt {

class ShareSplitter : public QSplitter {
  Q_OBJECT

 public:
  // The shares stand, in thousandths parted by "|", under `key` in section "CONFIG" of the user's defaults file.
  ShareSplitter(Qt::Orientation orientation, std::string key, QWidget* parent = nullptr);
  // Keeps what the user moved.
  ~ShareSplitter() override;

  // One for each part; to be called once all parts are in. What was kept goes first.
  void setShares(const std::vector<int>& designed);
  const std::vector<int>& shares() const { return shares_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void apply();
  void take();
  std::vector<int> kept() const;

  std::string key_;
  std::vector<int> shares_;
  bool moved_ = false;
};

}  // namespace vantrelix::qt
