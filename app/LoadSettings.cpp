#include "app/Module1.h"
#include "data/DataInterface.h"
#include "forms/main/frmMain.h"
#include "platform/Conversions.h"
#include "platform/PreviousInstance.h"
#include "settings/registerModule.h"

void Module1::LoadSettings()
{
    if (PreviousInstance()) {
        return;
    }
    distanceUnit = registerModule::GetRegistryValue(L"Settings", L"Langdenhet", L"km");
    languageOffset = ToInt16(registerModule::GetRegistryValue(L"Settings", L"Language", L"0"));
    DataInterface::LoadJournal();
    mainWindow = The<frmMain>().get();
    mainWindow->Show();
}
