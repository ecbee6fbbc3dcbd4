#include "import/importPreview.h"

#include <memory>
#include <utility>

#include "preview/frmAntPreview.h"

namespace vantrelix {

namespace {

PreviewAnswer answerOf(long action) {
  switch (action) {
    case frmAntPreview::kAdd:
      return PreviewAnswer::add;
    case frmAntPreview::kSkip:
      return PreviewAnswer::skip;
    case frmAntPreview::kNoPreview:
      return PreviewAnswer::noPreview;
    default:
      return PreviewAnswer::cancel;
  }
}

PreviewAnswer show(frmAntPreview& form, const std::string& caption, const ImportedAntenna& antenna) {
  // The answer to the antenna before must not stand for this one.
  form.lAction(frmAntPreview::kCancel);
  long action = 0;
  form.lAntPreview(caption, antenna.AntName, antenna.Gain, antenna.GainUnits, antenna.MinHor, antenna.MinVer,
                   antenna.HorCount, antenna.HorAngle, antenna.HorValue, antenna.VerCount, antenna.VerAngle,
                   antenna.VerValue, action);
  return answerOf(action);
}

}  // namespace

ImportOwner withPreviews(ImportOwner owner) {
  const auto form = std::make_shared<std::unique_ptr<frmAntPreview>>();
  owner.preview = [form](const std::string& caption, const ImportedAntenna& antenna) {
    if (!*form) *form = std::make_unique<frmAntPreview>();
    return show(**form, caption, antenna);
  };
  owner.unloadPreview = [form, unloadToo = std::move(owner.unloadPreview)] {
    form->reset();
    if (unloadToo) unloadToo();
  };
  return owner;
}

}  // namespace vantrelix
