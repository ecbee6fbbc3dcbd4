#include "demo/HostControls.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "qt/LookAnt.h"
#include "qt/LookAntDesc.h"
#include "qt/LookLine.h"

namespace vantrelix::demo {

namespace {

const QColor kPointer(0, 130, 60);

QString onOff(bool on) { return on ? " = true" : " = false"; }

void addRule(QVBoxLayout& layout) {
  auto* rule = new QFrame;
  rule->setFrameStyle(QFrame::HLine | QFrame::Sunken);
  layout.addSpacing(layout.spacing() / 2);
  layout.addWidget(rule);
  layout.addSpacing(layout.spacing() / 2);
}

template <class Button>
Button* named(Button* button, const QString& name, const QString& tip) {
  button->setObjectName(name);
  button->setToolTip(tip);
  return button;
}

}  // namespace

HostControls::HostControls(qt::LookAnt& control, qt::LookLine& line, qt::LookAntDesc& name, QWidget* parent)
    : QGroupBox("Host", parent), control_(control), line_(line), name_(name) {
  auto* layout = new QVBoxLayout(this);
  addBackgrounds(*layout);
  addRule(*layout);
  addViews(*layout);
  addMode(*layout);
  addRule(*layout);
  addPointers(*layout);
  layout->addStretch(1);
  showState();
}

QCheckBox* HostControls::addBox(QVBoxLayout& layout, const QString& name, const QString& caption, const QString& tip) {
  auto* box = named(new QCheckBox(caption, this), name, tip);
  layout.addWidget(box);
  return box;
}

void HostControls::addBackgrounds(QVBoxLayout& layout) {
  struct Row {
    const char *name, *caption, *call;
    void (LookupControl::*put)(bool);
  };
  constexpr Row rows[] = {
      {"whiteButton", "&White", "BackWhite", &LookupControl::BackWhite},
      {"redButton", "&Red", "BackRed", &LookupControl::BackRed},
      {"greyButton", "L&ight grey", "BackLtGray", &LookupControl::BackLtGray},
  };
  layout.addWidget(new QLabel("Background"));
  for (const Row& row : rows) {
    auto* button = named(new QPushButton(row.caption, this), row.name, "Paints the boxes of the controls");
    layout.addWidget(button);
    connect(button, &QPushButton::clicked, this, [this, row] {
      for (LookupControl* each :
           std::initializer_list<LookupControl*>{&control_.control(), &line_.control(), &name_.control()}) {
        (each->*row.put)(true);
      }
      did(row.call + onOff(true));
    });
  }
  clear_ = named(new QPushButton("C&lear values", this), "clearButton", "Blanks antenna, line and previews");
  layout.addWidget(clear_);
  connect(clear_, &QPushButton::clicked, this, [this] {
    control_.Clear();
    line_.Clear();
    control_.GetAntPat();
    did("Clear, GetAntPat");
  });
}

void HostControls::addViews(QVBoxLayout& layout) {
  previews_ = addBox(layout, "previewBox", "&Previews", "Shows the azimuth and elevation previews");
  connect(previews_, &QCheckBox::clicked, this, [this](bool on) {
    control_.SeePreview(on);
    did("SeePreview" + onOff(on));
  });
  gainOnly_ = addBox(layout, "gainOnlyBox", "Gain &only", "Cuts the control to its antenna rows");
  connect(gainOnly_, &QCheckBox::clicked, this, [this](bool on) {
    control_.bSeeGainOnly(on);
    did("bSeeGainOnly" + onOff(on));
  });
  polarisation_ = addBox(layout, "polarisationBox", "Polarisation &visible", "Shows the polarisation and its caption");
  connect(polarisation_, &QCheckBox::clicked, this, [this](bool on) {
    control_.bPolVis(on);
    did("bPolVis" + onOff(on));
  });
}

void HostControls::addMode(QVBoxLayout& layout) {
  QCheckBox* edits = addBox(layout, "editModeBox", "Loo&k-up edits",
                            "The look-up of the antenna controls opens the editor, in which libraries can be changed");
  const auto put = [this](bool on) {
    const eEditLookup mode = on ? eEdit : eLookup;
    control_.AntFormMode(mode);
    name_.AntFormMode(mode);
  };
  put(false);
  connect(edits, &QCheckBox::clicked, this, [this, put](bool on) {
    put(on);
    did(QString("AntFormMode = ") + (on ? "eEdit" : "eLookup"));
  });
}

void HostControls::addPointers(QVBoxLayout& layout) {
  bearing_ = named(new QDoubleSpinBox(this), "bearingSpin", "The direction to mark on a preview, in degrees");
  bearing_->setRange(-360, 360);
  bearing_->setDecimals(1);
  bearing_->setValue(45);
  bearing_->setSuffix(QString::fromUtf8("\xC2\xB0"));
  auto* caption = new QLabel("&Bearing");
  caption->setBuddy(bearing_);
  auto* azimuth = named(new QPushButton("Mark &azimuth", this), "markAzimuthButton",
                        "Draws a pointer on the azimuth preview; it stays until the next redraw");
  auto* elevation = named(new QPushButton("&Mark elevation", this), "markElevationButton",
                          "Draws a pointer on the elevation preview; it stays until the next redraw");
  auto* bearing = new QHBoxLayout;
  bearing->addWidget(caption);
  bearing->addWidget(bearing_, 1);
  layout.addLayout(bearing);
  layout.addWidget(azimuth);
  layout.addWidget(elevation);
  connect(azimuth, &QPushButton::clicked, this, [this] {
    control_.SeeAzimuth(bearing_->value(), kPointer);
    did(QString("SeeAzimuth %1").arg(bearing_->value()));
  });
  connect(elevation, &QPushButton::clicked, this, [this] {
    control_.SeeElevation(bearing_->value(), kPointer);
    did(QString("SeeElevation %1").arg(bearing_->value()));
  });
}

void HostControls::did(const QString& call) {
  showState();
  Q_EMIT acted(call);
}

void HostControls::setEditing(bool editing) { clear_->setEnabled(editing); }

void HostControls::showState() {
  previews_->setChecked(control_.SeePreview());
  previews_->setEnabled(!gainOnly_->isChecked());
  polarisation_->setChecked(control_.bPolVis());
}

}  // namespace vantrelix::demo
