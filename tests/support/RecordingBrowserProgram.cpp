// recording_browser FILE ADDRESS: adds the address as a line to the file. Replaces the web browser.
#include <fstream>

int main(int count, char** arguments)
{
    if (count != 3) {
        return 1;
    }
    std::ofstream file(arguments[1], std::ios::app);
    file << arguments[2] << '\n';
    return file.good() ? 0 : 1;
}
