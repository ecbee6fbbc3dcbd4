// What the run makes of the other file of a pair that is not the one it looks for.
#include <filesystem>
#include <sys/stat.h>

#include "EmsFixture.h"
#include "import/identifyFile.h"
#include "platform/FaultPlatform.h"
#include "platform/RunTimeFailure.h"

namespace vantrelix::test {

namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class PartnerFile : public Ems {
 protected:
  // Of the accepting formats, the antenna of this one.
  ImportedAntenna identified(const std::string& name) const {
    for (const AcceptingFormat& accepting : identifyFile(files.file(name))) {
      if (accepting.format->name == "ems") return accepting.antennas.at(0);
    }
    ADD_FAILURE() << "not accepted";
    return {};
  }
};

TEST_F(PartnerFile, IsNotSoughtInOtherCaseWhateverItsExtension) {
  for (const char* extension : {".INI", ".DBF", ".TXT", ".ini"}) {
    write(std::string("qE") + extension, text("0,0\n10,1\n"));
    const std::string name = write(std::string("qA") + extension, text());
    const ImportedAntenna antenna = only({name});
    EXPECT_EQ(antenna.HorCount, 2) << extension;
    EXPECT_EQ(antenna.VerCount, 0) << extension;
    EXPECT_EQ(identified(name).VerCount, 0) << extension;
  }
}

TEST_F(PartnerFile, OfItsVeryNameIsReadWhateverItsExtension) {
  for (const char* extension : {".INI", ".DBF", ".TXT"}) {
    write(std::string("qe") + extension, text("0,0\n10,1\n20,2\n"));
    const std::string name = write(std::string("qA") + extension, text());
    EXPECT_EQ(only({name}).VerCount, 3) << extension;
    EXPECT_EQ(identified(name).VerCount, 3) << extension;
  }
}

TEST_F(PartnerFile, ThatIsAFolderLeavesOneCut) {
  std::filesystem::create_directory(files.machine("qe.txt"));
  const ImportedAntenna antenna = importText("qA.txt", text());
  EXPECT_EQ(antenna.HorCount, 2);
  EXPECT_EQ(antenna.VerCount, 0);
}

TEST_F(PartnerFile, ThatIsEmptyFailsTheAntenna) {
  write("qe.txt", "");
  EXPECT_THAT(failureOf("qA.txt", text()), HasSubstr("Error 62: "));
}

TEST_F(PartnerFile, ThatIsAPipeFailsTheAntennaAndHoldsNothingUp) {
  ASSERT_EQ(::mkfifo(files.machine("qe.txt").c_str(), 0600), 0);
  const ImportResult result = import({write("qA.txt", text()), write("rA.txt", text())});
  EXPECT_EQ(result.ErrorCount, 1);
  EXPECT_EQ(result.failed.size(), 1U);
  EXPECT_EQ(result.added.size(), 1U);
}

// Fails the opening of one file with a text of its own.
class Refusing : public platform::FaultPlatform {
 public:
  Refusing(platform::Platform& real, std::string path, std::string text)
      : FaultPlatform(real), path_(std::move(path)), text_(std::move(text)) {}
  std::unique_ptr<platform::File> open(const std::string& path, platform::OpenMode mode) override {
    if (path == path_) throw RunTimeFailure(failure::permissionDenied, text_);
    return FaultPlatform::open(path, mode);
  }

 private:
  std::string path_, text_;
};

TEST_F(PartnerFile, ThatCannotBeOpenedIsNamedOnceAndWithoutALine) {
  write("qe.txt", text());
  const std::string path = files.machine("qe.txt");
  write("qA.txt", text());
  for (const std::string& told : {std::string("Not now"), "Permission denied: " + path}) {
    Refusing refusing(platform::current(), files.file("qe.txt"), told);
    const platform::Substitute substitute(refusing);
    const ImportResult result = import({"qA.txt"});
    const std::string place = told == "Not now" ? " (" + path + ")" : "";
    EXPECT_THAT(result.failed, ElementsAre(files.machine("qA.txt") + "\r\nError 70: " + told + place));
  }
}

class ScalaPair : public FormatImport {
 protected:
  ScalaPair() : FormatImport("scala") {}
};

TEST_F(ScalaPair, WhoseSecondCutCannotBeStoredLeavesNothingInTheTables) {
  suite.answers = {MsgAnswer::ok};
  const std::string header = "1\nA (450)\n3\n4\n5\n6\n";
  write("ABVA.PAT", header + "0 0\n99999999999 1\n");
  const ImportResult result = import({write("ABHA.PAT", header + "0 0\n90 1\n")});
  ASSERT_EQ(result.failed.size(), 1U);
  EXPECT_THAT(result.failed[0], HasSubstr("Error 3163: "));
  EXPECT_EQ(suite.messages.at(0).title, "Error Importing Antenna");
  EXPECT_EQ(MakeAMSFile(kMfg)->rowCount(), 0);
  EXPECT_EQ(MakeAHDFile(kMfg)->rowCount(), 0);
  EXPECT_EQ(MakeAVDFile(kMfg)->rowCount(), 0);
}

TEST_F(ScalaPair, OfAFileThatNamesNoCutStillAsksForItsNameLine) {
  const std::string points = "\n3\n4\n5\n6\n0 0\n";
  EXPECT_THAT(failureOf("AB1XA.PAT", "1\nA 450" + points), EndsWith("(line 2)"));
  EXPECT_EQ(failureOf("AB2XA.PAT", "1\nA (450)" + points), "");
  EXPECT_THAT(descriptions(), IsEmpty());
}

}  // namespace

}  // namespace vantrelix::test
