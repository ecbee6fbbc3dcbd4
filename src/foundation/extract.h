// Paths and file-name parts. The library's paths have backslashes; only a backslash separates here.
#pragma once

#include <string>
#include <string_view>

namespace vantrelix {

// Folder and file joined with exactly one backslash: leading slashes of file and trailing NULs and blanks of folder go.
// With forwardSlashes every backslash of the result becomes a slash.
std::string setPathName(std::string_view folder, std::string_view file, bool forwardSlashes = false);

// True when the file has a length above 0; emptyCounts when it is 0; false when it cannot be reached.
bool getFileExistLEN(const std::string& path, bool emptyCounts = false);

// Whether the folder exists; asks the user and creates it as the flags say.
bool getPathExist(const std::string& path, bool prompt, bool create);
// Creates each level in turn, ignoring failures.
void MakeDirPath(const std::string& path);

std::string ExtractFileName(std::string_view path);  // "C:\A\B.C.DBF" -> "B.C.DBF"
std::string ExtractBaseName(std::string_view path);  // -> "B", cut at the first point
std::string ExtractExtension(std::string_view path,
                             std::size_t longest = std::string::npos);  // -> "C.DBF"; blank where longer
std::string ExtractFolder(std::string_view path);                       // -> "C:\A\"
std::string ExtractFolderNoSlash(std::string_view path);                // -> "C:\A"
std::string ExtractPathNoExtension(std::string_view path);              // -> "C:\A\B"

// The path in the machine's own form, for messages and the log.
std::string displayPath(std::string_view path);

}  // namespace vantrelix
