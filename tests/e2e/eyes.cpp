// Reports the windows of the program under test to a test that runs outside Windows. This console program reads one
// request a line (words separated by tabs, UTF-8) and answers each with one line of JSON. It sends no input to the
// windows: the test does that with mouse and keyboard. It can write registry values, so that a test can prepare the
// settings.
#include <windows.h>

#include <commctrl.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Words = std::vector<std::string>;

constexpr UINT timeout = 3000; // milliseconds for a window to answer

// ---- JSON and text
// ---------------------------------------------------------------------------------------------------

std::string Utf8(std::wstring_view text)
{
    const int length = static_cast<int>(text.size());
    std::string result(static_cast<std::size_t>(length) * 3, '\0');
    const int used = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(),
                                         static_cast<int>(result.size()), nullptr, nullptr);
    result.resize(static_cast<std::size_t>(used));
    return result;
}

std::wstring Wide(std::string_view text)
{
    const int length = static_cast<int>(text.size());
    std::wstring result(text.size(), L'\0');
    const int used = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), length);
    result.resize(static_cast<std::size_t>(used));
    return result;
}

std::string Quoted(std::wstring_view text)
{
    std::string result = "\"";
    for (const char c : Utf8(text)) {
        if (c == '"' || c == '\\') {
            result += '\\';
            result += c;
        } else if (static_cast<unsigned char>(c) < 0x20U) {
            std::array<char, 8> escape{};
            std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
            result += escape.data();
        } else {
            result += c;
        }
    }
    return result + '"';
}

std::string Joined(const Words& parts, char open, char close)
{
    std::string result(1, open);
    for (const std::string& part : parts) {
        result += (result.size() > 1 ? "," : "") + part;
    }
    return result + close;
}

std::string Field(std::string_view name, const std::string& value)
{
    return '"' + std::string(name) + "\":" + value;
}

std::string Field(std::string_view name, bool value)
{
    return Field(name, std::string(value ? "true" : "false"));
}

std::string Numbered(HWND window)
{
    return std::to_string(reinterpret_cast<std::uintptr_t>(window));
}

std::string Json(const RECT& box)
{
    return Joined(
        {std::to_string(box.left), std::to_string(box.top), std::to_string(box.right), std::to_string(box.bottom)}, '[',
        ']');
}

// ---- Windows
// ---------------------------------------------------------------------------------------------------------

LRESULT Ask(HWND window, UINT message, WPARAM first = 0, LPARAM second = 0)
{
    DWORD_PTR answer = 0;
    if (SendMessageTimeoutW(window, message, first, second, SMTO_ABORTIFHUNG, timeout, &answer) == 0) {
        throw std::runtime_error("the window does not answer");
    }
    return static_cast<LRESULT>(answer);
}

std::wstring TextOf(HWND window)
{
    std::wstring text(static_cast<std::size_t>(Ask(window, WM_GETTEXTLENGTH)) + 1, L'\0');
    const LRESULT length = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::wstring ClassOf(HWND window)
{
    std::array<wchar_t, 256> name{};
    GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

DWORD ProcessOf(HWND window)
{
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    return id;
}

std::wstring ProgramOf(HWND window)
{
    HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, ProcessOf(window));
    std::array<wchar_t, MAX_PATH> path{};
    auto size = static_cast<DWORD>(path.size());
    QueryFullProcessImageNameW(process, 0, path.data(), &size);
    CloseHandle(process);
    const std::wstring_view whole = path.data();
    return std::wstring(whole.substr(whole.rfind(L'\\') + 1));
}

/// Dialogs and message boxes have the same class. Only message boxes have their text in a control with this ID.
constexpr int messageText = 0xFFFF;

std::string Described(HWND window)
{
    RECT frame{};
    RECT inside{};
    GetWindowRect(window, &frame);
    GetClientRect(window, &inside);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&inside), 2);
    return Joined({Field("handle", Numbered(window)), Field("cls", Quoted(ClassOf(window))),
                   Field("text", Quoted(TextOf(window))), Field("rect", Json(frame)), Field("client", Json(inside)),
                   Field("enabled", IsWindowEnabled(window) != 0), Field("visible", IsWindowVisible(window) != 0),
                   Field("message", GetDlgItem(window, messageText) != nullptr),
                   Field("minimised", IsIconic(window) != 0), Field("id", std::to_string(GetDlgCtrlID(window))),
                   Field("style", std::to_string(static_cast<std::uint32_t>(GetWindowLongPtrW(window, GWL_STYLE)))),
                   Field("owner", Numbered(GetWindow(window, GW_OWNER))), Field("parent", Numbered(GetParent(window)))},
                  '{', '}');
}

BOOL CALLBACK Collect(HWND window, LPARAM list)
{
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

/// Leaves out windows that are destroyed meanwhile.
std::string DescribeAll(const std::vector<HWND>& windows)
{
    Words found;
    for (HWND window : windows) {
        try {
            found.push_back(Described(window));
        } catch (const std::runtime_error&) {
            if (IsWindow(window) != 0) {
                throw;
            }
        }
    }
    return Joined(found, '[', ']');
}

/// windows PROGRAM: the visible top-level windows of a program, the topmost first.
std::string TopWindows(const Words& words)
{
    const std::wstring program = Wide(words.at(1));
    std::vector<HWND> all;
    EnumWindows(Collect, reinterpret_cast<LPARAM>(&all));
    std::erase_if(all, [&program](HWND window) {
        return IsWindowVisible(window) == 0 || _wcsicmp(ProgramOf(window).c_str(), program.c_str()) != 0;
    });
    return DescribeAll(all);
}

HWND WindowNamed(const std::string& number)
{
    HWND window = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(std::stoull(number)));
    if (IsWindow(window) == 0) {
        throw std::runtime_error("the window does not exist");
    }
    return window;
}

/// window HANDLE: one window.
std::string OneWindow(const Words& words)
{
    return Described(WindowNamed(words.at(1)));
}

/// controls HANDLE: all child windows, including hidden ones, in the order of creation.
std::string Controls(const Words& words)
{
    std::vector<HWND> all;
    EnumChildWindows(WindowNamed(words.at(1)), Collect, reinterpret_cast<LPARAM>(&all));
    return DescribeAll(all);
}

/// focus: the foreground window and the control in it that has the focus.
std::string Focus(const Words& /*words*/)
{
    HWND front = GetForegroundWindow();
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    GetGUIThreadInfo(GetWindowThreadProcessId(front, nullptr), &info);
    return Joined({Field("window", Numbered(front)), Field("control", Numbered(info.hwndFocus))}, '{', '}');
}

// ---- Controls
// --------------------------------------------------------------------------------------------------------

struct ListMessages {
    UINT count;
    UINT index;
    UINT length;
    UINT text;
};

ListMessages MessagesFor(HWND list)
{
    if (_wcsicmp(ClassOf(list).c_str(), L"ComboBox") == 0) {
        return {CB_GETCOUNT, CB_GETCURSEL, CB_GETLBTEXTLEN, CB_GETLBTEXT};
    }
    return {LB_GETCOUNT, LB_GETCURSEL, LB_GETTEXTLEN, LB_GETTEXT};
}

/// lines HANDLE: the lines of a list box or combo box and the index of the selected one, or -1.
std::string Lines(const Words& words)
{
    HWND list = WindowNamed(words.at(1));
    const ListMessages messages = MessagesFor(list);
    Words lines;
    const LRESULT count = Ask(list, messages.count);
    for (LRESULT at = 0; at < count; ++at) {
        const auto position = static_cast<WPARAM>(at);
        std::wstring text(static_cast<std::size_t>(Ask(list, messages.length, position)) + 1, L'\0');
        const LRESULT length = Ask(list, messages.text, position, reinterpret_cast<LPARAM>(text.data()));
        text.resize(static_cast<std::size_t>(length));
        lines.push_back(Quoted(text));
    }
    return Joined({Field("lines", Joined(lines, '[', ']')), Field("index", std::to_string(Ask(list, messages.index)))},
                  '{', '}');
}

/// line-box HANDLE INDEX: the rectangle of a line of a list box, in screen coordinates.
std::string LineBox(const Words& words)
{
    HWND list = WindowNamed(words.at(1));
    RECT box{};
    Ask(list, LB_GETITEMRECT, static_cast<WPARAM>(std::stoi(words.at(2))), reinterpret_cast<LPARAM>(&box));
    MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&box), 2);
    return Json(box);
}

/// number HANDLE NAME: one number of the state of a control.
std::string Number(const Words& words)
{
    static const std::map<std::string, UINT> questions{
        {"checked", BM_GETCHECK}, {"selection", EM_GETSEL}, {"position", UDM_GETPOS32}, {"limit", EM_GETLIMITTEXT}};
    return std::to_string(Ask(WindowNamed(words.at(1)), questions.at(words.at(2))));
}

/// Memory in the process of a window. The pointers in messages to a tree must point into its own process.
class RemoteMemory {
public:
    RemoteMemory(HWND window, std::size_t size)
        : process_(OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, ProcessOf(window))),
          memory_(VirtualAllocEx(process_, nullptr, size, MEM_COMMIT, PAGE_READWRITE))
    {
    }
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;
    ~RemoteMemory()
    {
        VirtualFreeEx(process_, memory_, 0, MEM_RELEASE);
        CloseHandle(process_);
    }

    char* At(std::size_t offset) const { return static_cast<char*>(memory_) + offset; }

    void Write(std::size_t offset, const void* from, std::size_t size) const
    {
        if (WriteProcessMemory(process_, At(offset), from, size, nullptr) == 0) {
            throw std::runtime_error("cannot write to the other process");
        }
    }

    void Read(std::size_t offset, void* into, std::size_t size) const
    {
        if (ReadProcessMemory(process_, At(offset), into, size, nullptr) == 0) {
            throw std::runtime_error("cannot read from the other process");
        }
    }

private:
    HANDLE process_;
    void* memory_;
};

constexpr std::size_t nodeTextLength = 260;
using NodeText = std::array<wchar_t, nodeTextLength>;

std::string DescribedNode(HWND tree, LRESULT node, int level, const RemoteMemory& there)
{
    TVITEMW item{};
    item.mask = TVIF_TEXT | TVIF_STATE | TVIF_HANDLE;
    item.hItem = reinterpret_cast<HTREEITEM>(node);
    item.stateMask = TVIS_SELECTED | TVIS_EXPANDED;
    item.pszText = reinterpret_cast<wchar_t*>(there.At(sizeof(item)));
    item.cchTextMax = static_cast<int>(nodeTextLength);
    there.Write(0, &item, sizeof(item));
    Ask(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(there.At(0)));
    NodeText text{};
    there.Read(0, &item, sizeof(item));
    there.Read(sizeof(item), text.data(), sizeof(text));

    // TVM_GETITEMRECT reads the node from the buffer into which it writes the rectangle.
    RECT box{};
    there.Write(0, &node, sizeof(node));
    const bool shown = Ask(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(there.At(0))) != 0;
    if (shown) {
        there.Read(0, &box, sizeof(box));
        MapWindowPoints(tree, nullptr, reinterpret_cast<POINT*>(&box), 2);
    }
    return Joined({Field("text", Quoted(text.data())), Field("level", std::to_string(level)),
                   Field("selected", (item.state & TVIS_SELECTED) != 0),
                   Field("expanded", (item.state & TVIS_EXPANDED) != 0), Field("rect", shown ? Json(box) : "null")},
                  '{', '}');
}

/// nodes HANDLE: the nodes of a tree of two levels, from top to bottom.
std::string Nodes(const Words& words)
{
    HWND tree = WindowNamed(words.at(1));
    const RemoteMemory there(tree, sizeof(TVITEMW) + sizeof(NodeText));
    Words nodes;
    for (LRESULT root = Ask(tree, TVM_GETNEXTITEM, TVGN_ROOT); root != 0;
         root = Ask(tree, TVM_GETNEXTITEM, TVGN_NEXT, root)) {
        nodes.push_back(DescribedNode(tree, root, 0, there));
        for (LRESULT child = Ask(tree, TVM_GETNEXTITEM, TVGN_CHILD, root); child != 0;
             child = Ask(tree, TVM_GETNEXTITEM, TVGN_NEXT, child)) {
            nodes.push_back(DescribedNode(tree, child, 1, there));
        }
    }
    return Joined(nodes, '[', ']');
}

// ---- Registry
// --------------------------------------------------------------------------------------------------------

/// settings-read SECTION NAME: the text of a value under HKEY_LOCAL_MACHINE, or null.
std::string ReadValue(const Words& words)
{
    std::array<wchar_t, 1024> text{};
    DWORD size = sizeof(text) - sizeof(wchar_t);
    const LSTATUS status = RegGetValueW(HKEY_LOCAL_MACHINE, Wide(words.at(1)).c_str(), Wide(words.at(2)).c_str(),
                                        RRF_RT_REG_SZ, nullptr, text.data(), &size);
    return status == ERROR_SUCCESS ? Quoted(text.data()) : "null";
}

/// settings-write SECTION NAME TEXT: writes a value under HKEY_LOCAL_MACHINE; true if that succeeds.
std::string WriteValue(const Words& words)
{
    const std::wstring text = words.size() > 3 ? Wide(words.at(3)) : std::wstring();
    const LSTATUS status =
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, Wide(words.at(1)).c_str(), Wide(words.at(2)).c_str(), REG_SZ, text.c_str(),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    return status == ERROR_SUCCESS ? "true" : "false";
}

// ---- Requests
// ------------------------------------------------------------------------------------------------

Words Split(const std::string& line)
{
    Words words(1);
    for (const char c : line) {
        if (c == '\t') {
            words.emplace_back();
        } else if (c != '\r') {
            words.back() += c;
        }
    }
    return words;
}

std::string Answer(const Words& words)
{
    using Question = std::string (*)(const Words&);
    static const std::map<std::string, Question> questions{{"windows", TopWindows},
                                                           {"window", OneWindow},
                                                           {"controls", Controls},
                                                           {"focus", Focus},
                                                           {"lines", Lines},
                                                           {"line-box", LineBox},
                                                           {"number", Number},
                                                           {"nodes", Nodes},
                                                           {"settings-read", ReadValue},
                                                           {"settings-write", WriteValue}};
    try {
        return Joined({Field("answer", questions.at(words.at(0))(words))}, '{', '}');
    } catch (const std::exception& problem) {
        return Joined({Field("problem", Quoted(Wide(problem.what())))}, '{', '}');
    }
}

} // namespace

int main()
{
    SetProcessDPIAware();
    std::string line;
    while (std::getline(std::cin, line)) {
        std::cout << Answer(Split(line)) << std::endl;
    }
    return 0;
}
