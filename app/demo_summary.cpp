#include "app/demo_summary.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>
#include <vector>

namespace nimbrel {
namespace {

struct FileKind {
  std::string_view name;  // monthly files: the name after the month and year digits
  bool monthly;
  std::string_view holds;
};

constexpr std::array kFileKinds{
    FileKind{"NIMBREL.INI", false, "settings, today's extremes, rain totals and records"},
    FileKind{"nimbrelbackup.ini", false, "copy of the settings taken each minute before the records are saved"},
    FileKind{"nimbrelinibackup.ini", false, "the settings as they were at the last daily reset"},
    FileKind{"nimbrelftp.ini", false, "upload settings and the flags shared with companion programs"},
    FileKind{"programerrorlog.txt", false, "the program's error log"},
    FileKind{"stationlog.txt", false, "what happened on the station link"},
    FileKind{"lg.txt", true, "the monthly log: one line of readings a minute"},
    FileKind{"lg2.txt", true, "the monthly soil and leaf log, a line a minute"},
    FileKind{"lgsun.txt", true, "the monthly solar and UV log, a line a minute"},
    FileKind{"lgten.txt", true, "the monthly log every ten minutes"},
    FileKind{"lgcsv.csv", true, "the monthly log as CSV, a line a minute"},
    FileKind{"lgcsv10.csv", true, "the monthly CSV log every 10 minutes"},
    FileKind{"lgcsv30.csv", true, "the monthly CSV log every 30 minutes"},
    FileKind{"lgcsv60.csv", true, "the monthly CSV log every hour"},
    FileKind{"lgcsv10ftp.csv", true, "the 10-minute CSV log copied for upload at 23:50"},
    FileKind{"vantagelogcsv.csv", true, "the month's Vantage sensor readings as CSV"},
    FileKind{"growlogcsv.csv", true, "the month's growing-degree readings as CSV"},
    FileKind{"dailylog.txt", false, "today's minute lines, started afresh at the daily reset"},
    FileKind{"dailylogcsv.csv", false, "today's minute lines as CSV, with the last hour's rain"},
    FileKind{"dailylog10min.txt", false, "today's ten-minute lines"},
    FileKind{"indoorlog.txt", false, "today's indoor temperature and humidity"},
    FileKind{"indoorlogcsv.csv", false, "today's indoor temperature and humidity as CSV"},
    FileKind{"extralog.csv", false, "the extra sensors' readings"},
    FileKind{"1wirelog.txt", false, "the 1-wire sensors' readings"},
    FileKind{"vantagelog.txt", false, "the Vantage sensor readings (solar, UV, ET)"},
    FileKind{"vantagelogten.txt", false, "the Vantage sensor readings every ten minutes"},
    FileKind{"growlog.txt", false, "growing-degree readings"},
    FileKind{"growlogten.txt", false, "growing-degree readings every ten minutes"},
    FileKind{"growtendailylog.txt", false, "today's growing-degree readings every ten minutes"},
    FileKind{"lightninglog.txt", false, "lightning strikes (none from this station)"},
    FileKind{"lightninglognexstorm.txt", false, "lightning strikes of a second detector (none here)"},
    FileKind{"ftplog.txt", false, "the upload log"},
    FileKind{"clientraw.txt", false, "the live snapshot for web pages, rewritten every 10 s"},
    FileKind{"clientrawtemp.txt", false, "clientraw.txt as first written, before it is copied into place"},
    FileKind{"wxlocal.html", false, "the example page template: tags such as %temp% between % signs"},
    FileKind{"wx.html", false, "wxlocal.html filled with the station's values every minute: open it in a browser"},
};

// "112026lg.txt" -> "lg.txt": month (1-12) and year digits in front.
std::string_view afterMonthAndYear(std::string_view name) {
  std::size_t digits = 0;
  while (digits < name.size() && std::isdigit(static_cast<unsigned char>(name[digits]))) ++digits;
  return digits == 5 || digits == 6 ? name.substr(digits) : std::string_view();
}

std::size_t countLines(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return static_cast<std::size_t>(std::count(std::istreambuf_iterator<char>(in), {}, '\n'));
}

std::string sizeText(std::uintmax_t bytes) {
  return bytes < 10240 ? fmt::format("{} B", bytes) : fmt::format("{} KiB", bytes / 1024);
}

std::string describeFile(const std::filesystem::path& file, const std::filesystem::path& shownFrom) {
  const std::string name = file.filename().string();
  const std::string_view holds = describeFileName(name);
  std::error_code error;
  const auto bytes = std::filesystem::file_size(file, error);
  std::string size = error ? std::string("?") : sizeText(bytes);
  const auto extension = file.extension();
  if (extension == ".txt" || extension == ".csv") {
    const std::size_t lines = countLines(file);
    if (lines > 0) size += fmt::format(", {} line{}", lines, lines == 1 ? "" : "s");
  }
  return fmt::format("  {:<34} {:<22} {}\n", file.lexically_relative(shownFrom).string(), size,
                     holds.empty() ? "" : holds);
}

void listFolder(const std::filesystem::path& folder, const std::filesystem::path& shownFrom, std::string& out) {
  std::vector<std::filesystem::path> files;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  for (const auto& file : files) out += describeFile(file, shownFrom);
}

}  // namespace

std::string_view describeFileName(std::string_view name) {
  const std::string_view monthly = afterMonthAndYear(name);
  for (const FileKind& kind : kFileKinds)
    if (kind.monthly ? monthly == kind.name : name == kind.name) return kind.holds;
  return {};
}

std::string describeWrittenFiles(const ProgramFolders& folders, SystemTime from, SystemTime to) {
  const auto programSeconds = std::chrono::duration_cast<std::chrono::seconds>(to - from).count();
  std::string text = fmt::format("\nThe program ran from {} to {} ({} program seconds). Files in {}:\n",
                                 formatLocalTime(toLocalTime(from)), formatLocalTime(toLocalTime(to)),
                                 programSeconds, folders.program.string());
  listFolder(folders.program, folders.program, text);
  listFolder(folders.logs, folders.program, text);
  listFolder(folders.webfiles, folders.program, text);
  text += "The monthly log's columns are named in its first line; clientraw.txt is one line of blank-separated "
          "fields (see docs/clientraw.md).\n";
  return text;
}

}  // namespace nimbrel
