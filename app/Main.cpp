#include "app/Module1.h"
#include "platform/system/Application.h"
#include "platform/windows/Form.h"
#include "platform/windows/UnhandledError.h"

int main()
{
    LoadLibrariesFromSystemFolderOnly();
    // An error at the start ends the program. Later errors end the operation only.
    if (!Guarded(Module1::LoadSettings)) {
        return 1;
    }
    RunMessageLoop();
    return 0;
}
