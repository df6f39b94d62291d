#include "app/Module1.h"
#include "data/DataInterface.h"
#include "forms/main/frmMain.h"
#include "platform/system/Conversions.h"
#include "platform/system/PreviousInstance.h"
#include "settings/registerModule.h"

void Module1::LoadSettings()
{
    if (PreviousInstance()) {
        return;
    }
    distanceUnit = registerModule::GetRegistryValue(L"Settings", L"Langdenhet", L"km");
    languageOffset = ToInt16(registerModule::GetRegistryValue(L"Settings", L"Language", L"0"));
    DataInterface::LoadJournal();
    Instance<frmMain>()->Show();
}
