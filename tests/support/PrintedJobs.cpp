#include "tests/support/PrintedJobs.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <thread>

namespace fs = std::filesystem;

fs::path PrintedFolder()
{
    const wchar_t* folder = _wgetenv(L"ODOMIRA_PRINTED");
    if (folder == nullptr) {
        throw std::runtime_error("this test needs a machine with a printer");
    }
    return fs::path(L"Z:" + std::wstring(folder)).make_preferred();
}

namespace {

/// The same path for a program of the host.
std::wstring HostPath(const fs::path& path)
{
    return path.generic_wstring().substr(2);
}

std::string Contents(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Waits for a file that a program of the host writes and then renames.
void WaitForFile(const fs::path& path)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!fs::exists(path)) {
        if (std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("nothing was printed: " + path.string());
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

/// Runs a command in the host's shell that writes a file to $1. A Windows program cannot wait for a program of the
/// host, so the file gets its name when it is complete.
void MakeOnHost(const fs::path& made, const std::wstring& command)
{
    if (fs::exists(made)) {
        return;
    }
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    std::wstring line =
        L"sh -c \"set -- '" + HostPath(made) + L".part'; " + command + L" && mv $1 '" + HostPath(made) + L"'\"";
    if (CreateProcessW(L"Z:\\bin\\sh", line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process) ==
        FALSE) {
        throw std::runtime_error("no shell on the host");
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    WaitForFile(made);
}

struct Character {
    double left;
    double right;
    double baseline;
    std::wstring text;
};

std::wstring FromUtf8(const std::string& bytes)
{
    std::wstring text(bytes.size(), L'\0');
    const int length = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), text.data(),
                                           static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

/// The character of an attribute value; only what the reports contain is known by name.
std::wstring Unescaped(const std::string& value)
{
    static const std::map<std::string, std::wstring> named{
        {"&apos;", L"'"}, {"&quot;", L"\""}, {"&amp;", L"&"}, {"&lt;", L"<"}, {"&gt;", L">"}};
    if (const auto found = named.find(value); found != named.end()) {
        return found->second;
    }
    const std::wstring text = value.starts_with("&#x")
                                  ? std::wstring{static_cast<wchar_t>(std::stoul(value.substr(3), nullptr, 16))}
                                  : FromUtf8(value);
    // The font has one glyph for two characters, and the PDF names the rarer one.
    return text == L"\u00AD" ? L"-" : text == L"\u00A0" ? L" " : text;
}

/// Joins characters of the same font to words. A gap wider than a twentieth of the font size separates two words.
void AddWords(std::vector<PrintedWord>& words, const std::vector<Character>& run, const PrintedWord& like)
{
    const double gap = like.points;
    for (const Character& character : run) {
        const bool blank = character.text == L" " || character.text.empty();
        const bool goesOn = !words.empty() && words.back().page == like.page && words.back().font == like.font &&
                            std::abs(words.back().baseline - character.baseline) < 1 &&
                            std::abs(character.left - words.back().right) < gap;
        if (blank) {
            continue;
        }
        if (goesOn) {
            words.back().text += character.text;
            words.back().right = character.right;
        } else {
            words.push_back({like.page, character.text, character.left, character.right, character.baseline,
                             like.points, like.font});
        }
    }
}

} // namespace

std::vector<PrintedWord> PrintedJob::Words() const
{
    fs::path listing = pdf;
    listing.replace_extension(".words");
    MakeOnHost(listing, L"gs -q -dNOPAUSE -dBATCH -dSAFER -sDEVICE=txtwrite -dTextFormat=0 -r1440 -sOutputFile=$1 '" +
                            HostPath(pdf) + L"'");
    std::istringstream lines(Contents(listing));
    const std::regex span(R"re(<span bbox="[^"]*" font="([^"]*)" size="([0-9.]+)")re");
    const std::regex letter(R"re(<char bbox="(-?\d+) (-?\d+) (-?\d+) -?\d+" c="([^"]*)")re");
    std::vector<PrintedWord> words;
    std::vector<Character> run;
    PrintedWord like{};
    std::smatch match;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("<page")) {
            ++like.page;
        } else if (std::regex_search(line, match, span)) {
            like.font = match[1];
            like.points = std::stod(match[2]);
        } else if (std::regex_search(line, match, letter)) {
            run.push_back({std::stod(match[1]), std::stod(match[3]), std::stod(match[2]), Unescaped(match[4])});
        } else if (line.starts_with("</span")) {
            AddWords(words, run, like);
            run.clear();
        }
    }
    return words;
}

std::vector<WordOnSheet> PrintedJob::WordsOnSheets() const
{
    fs::path listing = pdf;
    listing.replace_extension(".bounds");
    MakeOnHost(listing, L"pdftotext -bbox '" + HostPath(pdf) + L"' $1");
    std::istringstream lines(Contents(listing));
    const std::regex sheet(R"re(<page width="([0-9.]+)" height="([0-9.]+)")re");
    const std::regex word(
        R"re(<word xMin="(-?[0-9.]+)" yMin="(-?[0-9.]+)" xMax="(-?[0-9.]+)" yMax="(-?[0-9.]+)">([^<]*)<)re");
    constexpr double point = 20;
    std::vector<WordOnSheet> words;
    WordOnSheet next{};
    std::smatch match;
    const auto twips = [&match](std::size_t group) { return std::stod(match[group]) * point; };
    for (std::string line; std::getline(lines, line);) {
        if (std::regex_search(line, match, sheet)) {
            ++next.page;
            next.sheetWidth = twips(1);
            next.sheetHeight = twips(2);
        } else if (std::regex_search(line, match, word)) {
            next.left = twips(1);
            next.top = twips(2);
            next.right = twips(3);
            next.bottom = twips(4);
            next.text = FromUtf8(match[5]);
            std::ranges::replace(next.text, L'\u00AD', L'-'); // the font has one glyph for both
            words.push_back(next);
        }
    }
    return words;
}

PagePicture::PagePicture(const PrintedJob& job, int page)
{
    fs::path picture = job.pdf;
    picture.replace_extension(L".page" + std::to_wstring(page) + L".pgm");
    // 144 dots an inch: ten twips each.
    MakeOnHost(picture, L"pdftoppm -r 144 -gray -singlefile -f " + std::to_wstring(page) + L" '" + HostPath(job.pdf) +
                            L"' > $1");
    std::ifstream file(picture, std::ios::binary);
    std::string kind;
    int brightest = 0;
    file >> kind >> width_ >> height_ >> brightest;
    file.get();
    pixels_.assign(std::istreambuf_iterator<char>(file), {});
    if (kind != "P5" || pixels_.size() != static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)) {
        throw std::runtime_error("no picture of the page");
    }
}

int PagePicture::At(double x, double y) const
{
    const auto column = std::clamp(static_cast<int>(x / 10), 0, width_ - 1);
    const auto row = std::clamp(static_cast<int>(y / 10), 0, height_ - 1);
    return pixels_[static_cast<std::size_t>(row) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(column)];
}

std::vector<PrintedJob> WaitForJobs(std::size_t count)
{
    std::vector<PrintedJob> jobs;
    for (std::size_t number = 1;; ++number) {
        std::wstring name = std::to_wstring(number);
        name.insert(0, 5 - name.size(), L'0');
        const fs::path base = PrintedFolder() / (L"job-" + name);
        const fs::path pdf = base.wstring() + L".pdf";
        if (number > count && !fs::exists(pdf)) {
            return jobs;
        }
        WaitForFile(pdf);
        const std::string note = Contents(base.wstring() + L".txt");
        const auto noted = [&note](const std::string& key) {
            const std::size_t begin = note.find(key) + key.size();
            return note.substr(begin, note.find('\n', begin) - begin);
        };
        jobs.push_back({FromUtf8(noted("title=")), std::stoi(noted("\ncopies=")), FromUtf8(noted("\nprinter=")), pdf});
    }
}

std::size_t JobsEverQueued()
{
    const fs::path spool = PrintedFolder().parent_path() / "spool";
    return static_cast<std::size_t>(std::ranges::count_if(fs::directory_iterator(spool), [](const auto& entry) {
        return entry.is_regular_file() && entry.path().filename().string().starts_with("d");
    }));
}

std::string TakePrintedFile(const fs::path& path)
{
    if (!fs::exists(path)) {
        MakeOnHost(path, L"mv FILE: $1");
    }
    std::string contents = Contents(path);
    fs::remove(path);
    return contents;
}
