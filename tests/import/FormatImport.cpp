#include "FormatImport.h"

#include <algorithm>
#include <cctype>
#include <random>
#include <utility>

namespace vantrelix::test {

namespace {

std::filesystem::path samplesFolder(const std::string& format) {
  return std::filesystem::path(VANTRELIX_SOURCE_DIR) / "tests/data" / fileNameOf(format);
}

std::vector<std::string> badTexts(const std::string& goodText) {
  constexpr std::size_t kMegabytes = 4 << 20;
  std::vector<std::string> texts = {"",
                                    std::string(kMegabytes, 'x'),
                                    std::string(kMegabytes, '7'),
                                    std::string(kMegabytes, ','),
                                    std::string(kMegabytes, ' ') + "\n1\n2\n3\n4\n5\n6\n7\n8\n9 9\n",
                                    "\n\n\n\n\n\n\n\n" + std::string(kMegabytes, ':'),
                                    std::string(5000, '\0'),
                                    std::string(5000, '\r'),
                                    "32767\n-1\n32767\n-1\n32767\n-1\n32767\n-1\n32767 -1\n-1,32767\n",
                                    anyBytes()};
  for (std::size_t length = 1; length < goodText.size(); length += 3) texts.push_back(goodText.substr(0, length));
  return texts;
}

}  // namespace

std::string fileNameOf(const std::string& format) {
  std::string name;
  bool raise = false;
  for (const char c : format) {
    if (c != '-') name += raise ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
    raise = c == '-';
  }
  return name;
}

std::vector<std::string> formatNames() {
  std::vector<std::string> names;
  for (const ImportFormat& format : importFormats()) names.push_back(format.name);
  return names;
}

std::vector<std::string> samplesOf(const std::string& format, bool damaged) {
  std::vector<std::string> names;
  const std::filesystem::path folder = samplesFolder(format);
  if (!std::filesystem::is_directory(folder)) return names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (entry.is_regular_file() && name.starts_with("damaged") == damaged) names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string anyBytes() {
  std::mt19937 random(7);
  std::string bytes;
  for (int i = 0; i < 20000; ++i) bytes += static_cast<char>(random() % 256);
  return bytes;
}

ImportResult FormatImport::import(const std::vector<std::string>& names) {
  std::vector<std::string> paths;
  for (const std::string& name : names) paths.push_back(files.file(name));
  antennas.clear();
  ImportOwner owner;
  owner.preview = [this](const std::string& caption, const ImportedAntenna& antenna) {
    captions.push_back(caption);
    antennas.push_back(antenna);
    return answer;
  };
  return run(paths, true, owner, format_);
}

ImportedAntenna FormatImport::only(const std::vector<std::string>& names) {
  const ImportResult result = import(names);
  EXPECT_EQ(result.ErrorCount, 0) << ::testing::PrintToString(result.failed);
  EXPECT_EQ(antennas.size(), 1u);
  return antennas.size() == 1 ? antennas.front() : ImportedAntenna();
}

std::string FormatImport::failure(const std::string& name) {
  const ImportResult result = import({name});
  EXPECT_EQ(result.failed.size(), static_cast<std::size_t>(result.ErrorCount));
  return result.failed.empty() ? "" : result.failed.front();
}

std::string FormatImport::write(const std::string& name, const std::string& text) const {
  files.write(name, text);
  return name;
}

std::string FormatImport::copied(const std::string& name, const std::string& as) const {
  return write(as.empty() ? name : as, sample(name));
}

void FormatImport::copySamples(const std::vector<std::string>& names) const {
  for (const std::string& name : names) copied(name);
}

std::string FormatImport::sample(const std::string& name) const {
  return readMachineFile((samplesFolder(format_.name) / name).string());
}

void FormatImport::expectOnePairStored(const std::string& description, double Gain, double frequency) const {
  const std::vector<AntennaListEntry> list = listAntennas(getAntennasPath(), std::string("AMS") + kMfg);
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0].description, description);
  EXPECT_DOUBLE_EQ(list[0].gain, Gain);
  EXPECT_EQ(list[0].gainUnits, "dBd");
  EXPECT_DOUBLE_EQ(list[0].fLow, frequency);
  EXPECT_EQ(list[0].horizontalPoints, 3);
  EXPECT_EQ(list[0].verticalPoints, 3);
}

void FormatImport::expectPreviewsBehindNoPreview(const std::vector<std::string>& names,
                                                 const std::string& previewCaption, const std::string& firstAntenna) {
  answer = PreviewAnswer::noPreview;
  import(names);
  ASSERT_EQ(captions.size(), names.size());
  EXPECT_EQ(captions[0], previewCaption + "\r\nFile: " + files.machine(names[0]) + "\r\n" + firstAntenna);
  EXPECT_EQ(descriptions().size(), names.size());
}

void FormatImport::expectWholeAntennas() const {
  using Points = std::pair<long, long>;
  std::vector<Points> read, stored;
  for (const ImportedAntenna& antenna : antennas) {
    if (antenna.HorCount > 0 || antenna.VerCount > 0) read.push_back({antenna.HorCount, antenna.VerCount});
  }
  for (const AntennaListEntry& entry : listAntennas(getAntennasPath(), std::string("AMS") + kMfg)) {
    stored.push_back({entry.horizontalPoints, entry.verticalPoints});
  }
  EXPECT_THAT(stored, ::testing::UnorderedElementsAreArray(read));
}

int FormatImport::failuresOfCutTexts(const std::string& text, const std::string& prefix, const std::string& suffix) {
  std::vector<std::string> names;
  for (std::size_t length = 0; length < text.size(); ++length) {
    names.push_back(write(prefix + std::to_string(length) + suffix, text.substr(0, length)));
  }
  const ImportResult result = import(names);
  EXPECT_EQ(result.filesRead, static_cast<long>(names.size()));
  EXPECT_EQ(antennas.size() + static_cast<std::size_t>(result.ErrorCount), names.size());
  expectWholeAntennas();
  return result.ErrorCount;
}

void FormatImport::expectDamagedSamplesToFailBut(const std::vector<std::string>& readAllTheSame) {
  const std::vector<std::string> names = samplesOf(format_.name, true);
  EXPECT_GE(names.size(), 8u);
  copySamples(names);
  const ImportResult result = import(names);
  std::vector<std::string> paths, failed;
  for (const std::string& name : names) {
    if (std::find(readAllTheSame.begin(), readAllTheSame.end(), name) == readAllTheSame.end()) {
      paths.push_back(files.machine(name));
    }
  }
  for (const std::string& text : result.failed) failed.push_back(text.substr(0, text.find('\r')));
  EXPECT_EQ(failed, paths);
  EXPECT_EQ(result.ErrorCount, static_cast<int>(paths.size()));
  EXPECT_EQ(antennas.size(), readAllTheSame.size());
  expectWholeAntennas();
}

void FormatImport::expectBadFilesToHarmNothing(const std::string& goodName, const std::string& goodText) {
  const std::string suffix = goodName.substr(goodName.find('.'));
  std::vector<std::string> names;
  for (const std::string& text : badTexts(goodText)) {
    names.push_back("bad" + std::to_string(names.size()) + suffix);
    files.write(names.back(), text);
  }
  names.push_back("folder" + suffix);
  std::filesystem::create_directory(files.machine(names.back()));
  files.write(goodName, goodText);
  names.push_back(goodName);

  const ImportResult result = import(names);

  EXPECT_GE(result.ErrorCount, 3);
  EXPECT_EQ(result.failed.size() + antennas.size(), names.size());
  ASSERT_FALSE(result.added.empty());
  EXPECT_EQ(result.added.back().file, files.file(goodName));
  expectWholeAntennas();
}

}  // namespace vantrelix::test
