#include "import/GetMultiFiles.h"

#include <algorithm>
#include <exception>
#include <string_view>

#include "foundation/errHand.h"
#include "foundation/extract.h"
#include "foundation/text.h"
#include "platform/RunTimeFailure.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr std::uint32_t kLastFilter = 65535;

std::string dialogFilter(const std::vector<FileFilter>& filters) {
  std::string text;
  for (const FileFilter& filter : filters) text += filter.description + "|" + filter.pattern + "|";
  text += "All Files (*.*)|*.*";
  std::replace(text.begin(), text.end(), '|', '\0');
  return text;
}

int dialogFilterIndex(std::int32_t filterIndex, std::size_t filters) {
  const bool last = static_cast<std::uint32_t>(filterIndex) >= kLastFilter;
  return last ? static_cast<int>(filters) + 1 : filterIndex;
}

// The fields one after the other: asking for each by its number would take the square of the time.
std::vector<std::string> fieldsOf(std::string_view answer) {
  std::vector<std::string> fields;
  if (answer.empty()) return fields;
  std::size_t start = 0;
  for (std::size_t end = 0; (end = answer.find('\0', start)) != std::string_view::npos; start = end + 1) {
    fields.emplace_back(answer.substr(start, end - start));
  }
  fields.emplace_back(answer.substr(start));
  return fields;
}

void appendPaths(std::vector<std::string>& files, const std::string& answer) {
  const std::vector<std::string> fields = fieldsOf(answer);
  if (fields.size() == 1) files.push_back(fields[0]);
  if (fields.size() < 2 || getLenTrim(fields[0]) == 0) return;
  for (std::size_t i = 1; i < fields.size(); ++i) {
    if (getLenTrim(fields[i]) > 0) files.push_back(setPathName(fields[0], fields[i]));
  }
}

}  // namespace

std::vector<std::string> GetMultiFiles(const std::string& title, const std::string& folder,
                                       const std::vector<FileFilter>& filters, std::int32_t filterIndex) {
  std::vector<std::string> files{""};
  const std::string label = "GetMultiFiles for " + title;
  try {
    appendPaths(files, desktop().openFiles(
                           {title, folder, dialogFilter(filters), dialogFilterIndex(filterIndex, filters.size())}));
  } catch (const RunTimeFailure& failure) {
    ErrHand(failure, label);
  } catch (const std::exception& failure) {
    ErrHand(failure, label);
  }
  return files;
}

}  // namespace vantrelix
