// A format's imports from files of a folder; what was read is kept as the preview shows it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "ImportSuite.h"

namespace vantrelix::test {

// "nsma-fcc" is "nsmaFcc" in the names of files.
std::string fileNameOf(const std::string& format);
// The names in the folder of the format's samples, in order: those that begin with "damaged", or the others.
std::vector<std::string> samplesOf(const std::string& format, bool damaged);
// Of all formats, and the name of such a format's test.
std::vector<std::string> formatNames();
inline constexpr auto kFormatTestName = [](const testing::TestParamInfo<std::string>& test) {
  return fileNameOf(test.param);
};
// Bytes of every kind, the same in each run.
std::string anyBytes();

class FormatImport : public ImportSuite {
 protected:
  explicit FormatImport(const std::string& format) : format_(*findImportFormat(format)) {}

  // Imports the named files of the folder in one run; `antennas` holds what was read whole.
  ImportResult import(const std::vector<std::string>& names);
  // The antenna of a run that gives exactly one, with nothing failed.
  ImportedAntenna only(const std::vector<std::string>& names);
  ImportedAntenna importOne(const std::string& name) { return only({name}); }
  ImportedAntenna importText(const std::string& name, const std::string& text) { return only({write(name, text)}); }
  // The reason why the one file failed; blank where it did not.
  std::string failure(const std::string& name);
  std::string failureOf(const std::string& name, const std::string& text) { return failure(write(name, text)); }

  // Both give the name.
  std::string write(const std::string& name, const std::string& text) const;
  std::string copied(const std::string& name, const std::string& as = "") const;
  void copySamples(const std::vector<std::string>& names) const;
  std::string sample(const std::string& name) const;

  // The library holds one antenna of three points in each cut, at one frequency, in dBd.
  void expectOnePairStored(const std::string& description, double Gain, double frequency) const;
  // Both files are shown and added, though each is answered with No Preview.
  void expectPreviewsBehindNoPreview(const std::vector<std::string>& names, const std::string& previewCaption,
                                     const std::string& firstAntenna);
  // The library holds the antennas of the last run, each with the points that were read, and no others.
  void expectWholeAntennas() const;
  // Imports the text cut behind each of its bytes, as prefix + number + suffix; gives how many of the files failed. The
  // others are whole antennas of the library.
  int failuresOfCutTexts(const std::string& text, const std::string& prefix, const std::string& suffix);
  // In one run each damaged sample costs one count and nothing else, but for those named, which are read.
  void expectDamagedSamplesToFailBut(const std::vector<std::string>& readAllTheSame);
  // Imports files of any bytes, cut short anywhere and too long, and a folder, then the good file: each fails or is
  // read by itself, and what the library holds then is what was read.
  void expectBadFilesToHarmNothing(const std::string& goodName, const std::string& goodText);

  std::vector<ImportedAntenna> antennas;
  std::vector<std::string> captions;
  PreviewAnswer answer = PreviewAnswer::add;

 private:
  const ImportFormat& format_;
};

}  // namespace vantrelix::test
