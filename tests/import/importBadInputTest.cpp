// What the run takes of files that hold anything, in every format.
#include <algorithm>
#include <cctype>
#include <cmath>

#include "FormatImport.h"
#include "TextSource.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::test {

namespace {

using ::testing::HasSubstr;

constexpr std::size_t kLongLine = std::size_t{8} << 20;

class AnyFormat : public FormatImport, public testing::WithParamInterface<std::string> {
 protected:
  AnyFormat() : FormatImport(GetParam()) { suite.answers.assign(100000, MsgAnswer::no); }

  std::vector<std::string> validSamples() const { return samplesOf(GetParam(), false); }
  // A sample that is read to an antenna with points.
  std::string goodSample() {
    for (const std::string& name : validSamples()) {
      if (import({copied(name)}).added.size() == 1) return name;
    }
    ADD_FAILURE() << "no sample is read";
    return "";
  }

  // Gives the text to the reader, without any library; true where it was read.
  bool expectRefusedOrWhole(const std::string& name, const std::string& text) const {
    const ImportFormat& format = *findImportFormat(GetParam());
    TextSource source(files.file(name), text);
    ImportedAntenna antenna;
    try {
      format.read(source, antenna);
    } catch (const RunTimeFailure& failure) {
      EXPECT_NE(failure.description(), "");
      return false;
    }
    if (antenna.ErrFlag != 0) return false;
    if (!(format.traits & ImportFormat::storesItself)) source.store(antenna);
    for (const ImportedAntenna& read : source.stored) {
      expectWholeCut(read.HorCount, read.HorAngle, read.HorValue);
      expectWholeCut(read.VerCount, read.VerAngle, read.VerValue);
    }
    return true;
  }
  static void expectWholeCut(std::int16_t count, const std::vector<double>& angles, const std::vector<double>& values) {
    const auto isFinite = [](double number) { return std::isfinite(number); };
    ASSERT_GE(count, 0);
    ASSERT_EQ(angles.size(), static_cast<std::size_t>(count));
    ASSERT_EQ(values.size(), angles.size());
    EXPECT_TRUE(std::all_of(angles.begin(), angles.end(), isFinite));
    EXPECT_TRUE(std::all_of(values.begin(), values.end(), isFinite));
  }

  // Imports the files in one run: each fails with one count and one reason, or is read, or fails in the writing, which
  // is told; and the library holds what was read whole.
  ImportResult expectEachCountedOrWhole(const std::vector<std::string>& names) {
    const ImportResult result = import(names);
    EXPECT_EQ(result.filesRead, static_cast<long>(names.size()));
    EXPECT_GE(result.failed.size(), static_cast<std::size_t>(result.ErrorCount));
    const std::size_t toldInWriting = result.failed.size() - static_cast<std::size_t>(result.ErrorCount);
    long points = 0;
    for (const ImportedAntenna& antenna : antennas) points += antenna.HorCount > 0 || antenna.VerCount > 0;
    EXPECT_EQ(result.added.size() + toldInWriting, static_cast<std::size_t>(points));
    for (const AntennaListEntry& entry : listAntennas(getAntennasPath(), std::string("AMS") + kMfg)) {
      EXPECT_GT(entry.horizontalPoints + entry.verticalPoints, 0) << entry.description;
    }
    return result;
  }
};

TEST_P(AnyFormat, AFileThatEndsAnywhereIsRefusedOrReadWhole) {
  for (const std::string& name : validSamples()) {
    SCOPED_TRACE(name);
    const std::string text = sample(name);
    int refused = 0;
    for (std::size_t length = 0; length < text.size(); ++length) {
      refused += !expectRefusedOrWhole(name, text.substr(0, length));
    }
    EXPECT_GT(refused, 0);
  }
}

TEST_P(AnyFormat, AFileThatEndsAnywhereIsCountedOrWholeInTheLibrary) {
  constexpr std::size_t kPlaces = 24;  // in each sample
  std::vector<ImportedAntenna> all;
  int done = 0;
  for (const std::string& name : validSamples()) {
    SCOPED_TRACE(name);
    const std::string text = sample(name);
    std::vector<std::string> names;
    for (std::size_t place = 0; place < kPlaces; ++place) {
      const std::size_t length = text.size() * place / kPlaces;
      // Cuts of different samples are no pairs.
      names.push_back(
          write(std::to_string(done) + "cut" + std::to_string(length) + "_" + name, text.substr(0, length)));
    }
    const ImportResult result = expectEachCountedOrWhole(names);
    EXPECT_GT(result.ErrorCount, 0);
    ++done;
    all.insert(all.end(), antennas.begin(), antennas.end());
  }
  antennas = all;
  expectWholeAntennas();
}

// The texts with each number of a line with letters, or of the first lines, as the number given.
std::vector<std::string> withNumberAs(const std::string& text, const std::string& number) {
  constexpr std::size_t kMostTexts = 60;
  std::vector<std::string> texts;
  for (std::size_t at = 0; at < text.size() && texts.size() < kMostTexts; ++at) {
    if (!std::isdigit(static_cast<unsigned char>(text[at]))) continue;
    std::size_t end = at;
    while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end]))) ++end;
    texts.push_back(text.substr(0, at) + number + text.substr(end));
    at = end;
  }
  return texts;
}

TEST_P(AnyFormat, NumbersAtTheEndsOfACountAreCountedOrWhole) {
  constexpr int kImported = 8;  // one text of so many goes into the library
  std::vector<std::string> names;
  int texts = 0;
  for (const std::string& name : validSamples()) {
    for (const char* number : {"32767", "-1", "32768", "0"}) {
      for (const std::string& text : withNumberAs(sample(name), number)) {
        expectRefusedOrWhole(name, text);
        if (texts++ % kImported == 0) names.push_back(write("n" + std::to_string(texts) + "_" + name, text));
      }
    }
  }
  ASSERT_GT(texts, 40);
  expectEachCountedOrWhole(names);
}

TEST_P(AnyFormat, BytesOfAnyKindAreCountedOrWhole) {
  std::vector<std::string> names;
  for (const std::string& name : validSamples()) {
    const std::string text = sample(name);
    std::string nuls = text, endless = text;
    std::replace(nuls.begin(), nuls.end(), ' ', '\0');
    std::replace_if(
        endless.begin(), endless.end(), [](char c) { return c == '\r' || c == '\n'; }, '\0');
    const std::string png("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    for (const std::string& bad : {png + anyBytes(), nuls, endless, std::string(100, '\0') + text, text + anyBytes(),
                                   std::string("\xFF\xFE") + text, std::string(1, '\n') + text}) {
      names.push_back(write("b" + std::to_string(names.size()) + "_" + name, bad));
    }
  }
  expectEachCountedOrWhole(names);
}

// A reader that looks at a line again and again would never come to its end.
TEST_P(AnyFormat, ALineOf8MegabytesComesToItsEnd) {
  const std::string good = goodSample();
  const std::string text = sample(good);
  const std::string digits = write("digits_" + good, std::string(kLongLine, '7'));
  const std::string blanks = write("blanks_" + good, text + std::string(kLongLine, ' ') + "1 1\r\n");
  expectEachCountedOrWhole({digits, blanks});
}

TEST_P(AnyFormat, AFolderInPlaceOfAFileIsOneCountAndTheRunGoesOn) {
  const std::string good = goodSample();
  std::filesystem::create_directory(files.machine("folder_" + good));
  const ImportResult result = import({"folder_" + good, good});
  EXPECT_EQ(result.ErrorCount, 1);
  ASSERT_EQ(result.failed.size(), 1u);
  EXPECT_THAT(result.failed[0], HasSubstr("folder_"));
  EXPECT_EQ(result.added.size(), 1u);
}

TEST_P(AnyFormat, AFileThatVanishesBeforeItsTurnIsPassedOverAndBeforeItsOpeningOneCount) {
  const std::string good = goodSample();
  for (const char* name : {"early_", "late_"}) copied(good, name + good);
  ImportOwner owner;
  owner.progress = [&](const std::string& text) {
    if (text.find("late_") != std::string::npos) std::filesystem::remove(files.machine("late_" + good));
    std::filesystem::remove(files.machine("early_" + good));
  };
  const ImportResult result = run({files.file("late_" + good), files.file("early_" + good), files.file(good)}, false,
                                  owner, *findImportFormat(GetParam()));
  EXPECT_EQ(result.ErrorCount, 1);
  ASSERT_EQ(result.failed.size(), 1u);
  EXPECT_THAT(result.failed[0], HasSubstr("late_"));
  ASSERT_EQ(result.skipped.size(), 1u);
  EXPECT_EQ(result.skipped[0].reason, SkipReason::missing);
  ASSERT_EQ(result.added.size(), 1u);
  EXPECT_EQ(result.added[0].file, files.file(good));
}

TEST_P(AnyFormat, NamesInOtherScriptsAreRead) {
  const std::string good = goodSample();
  const ImportedAntenna plain = only({good});
  for (const char* script : {"\xCE\xB1\xCE\xB2 ", "\xD0\x90\xD0\xBD\xD1\x82 ", "\xE5\xA4\xA9\xE7\xB7\x9A ",
                             "\xF0\x9F\x93\xA1 ", "caf\xC3\xA9 "}) {
    const ImportedAntenna antenna = only({copied(good, script + good)});
    EXPECT_EQ(antenna.HorValue, plain.HorValue);
    EXPECT_EQ(antenna.VerValue, plain.VerValue);
  }
}

TEST_P(AnyFormat, AnEmptyFileIsOneCount) {
  const std::string good = goodSample();
  const ImportResult result = import({write("empty_" + good, "")});
  EXPECT_EQ(result.ErrorCount, 1);
}

INSTANTIATE_TEST_SUITE_P(Import, AnyFormat, testing::ValuesIn(formatNames()), kFormatTestName);

}  // namespace

}  // namespace vantrelix::test
