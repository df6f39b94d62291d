#include "app/Module1.h"
#include "platform/Application.h"
#include "platform/Form.h"
#include "platform/UnhandledError.h"

int main()
{
    LoadLibrariesFromSystemFolderOnly();
    // An error while starting is shown and ends the program; once the window is open, errors end only what failed.
    if (!Guarded(Module1::LoadSettings)) {
        return 1;
    }
    RunMessageLoop();
    return 0;
}
