// What another program prints.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include <QProcess>

namespace vantrelix::test {

inline std::string runOther(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  EXPECT_TRUE(process.waitForFinished()) << program.toStdString() << " is not built or hangs";
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  return process.readAllStandardOutput().toStdString();
}

}  // namespace vantrelix::test
