; What the setup says beside the texts that NSIS brings along. Each text stands in both languages, one below the other.

!macro Text NAME ENGLISH SWEDISH
  LangString ${NAME} ${LANG_ENGLISH} `${ENGLISH}`
  LangString ${NAME} ${LANG_SWEDISH} `${SWEDISH}`
!macroend

; The names of the guide on the Start menu.
!define GUIDE_NAME_ENGLISH "Odomira Guide"
!define GUIDE_NAME_SWEDISH "Handbok för Odomira"

!insertmacro Text guideName \
  "${GUIDE_NAME_ENGLISH}" \
  "${GUIDE_NAME_SWEDISH}"

!insertmacro Text guideFile \
  "${GUIDE_ENGLISH}" \
  "${GUIDE_SWEDISH}"

!insertmacro Text caption \
  "Odomira Setup" \
  "Installation av Odomira"

!insertmacro Text uninstallCaption \
  "Uninstall Odomira" \
  "Avinstallation av Odomira"

!insertmacro Text whichLanguage \
  "Which language do you want to use?" \
  "Vilket språk vill du använda?"

!insertmacro Text welcomeTitle \
  "Odomira ${VERSION}" \
  "Odomira ${VERSION}"

!insertmacro Text welcomeText \
  "With Odomira you keep a driver's mileage journal. Setup installs it for everyone who uses this computer.$\r$\n$\r$\nThe journal and the settings of an earlier version are kept." \
  "Med Odomira för du körjournal. Programmet installeras för alla som använder datorn.$\r$\n$\r$\nJournalen och inställningarna från en tidigare version behålls."

!insertmacro Text upgradeText \
  "Odomira $installedVersion is installed in$\r$\n$installedFolder$\r$\n$\r$\nSetup replaces it with version ${VERSION}. The journal and the settings are kept." \
  "Odomira $installedVersion är installerat i$\r$\n$installedFolder$\r$\n$\r$\nProgrammet ersätts med version ${VERSION}. Journalen och inställningarna behålls."

!insertmacro Text upgrade \
  "&Upgrade" \
  "&Uppgradera"

!insertmacro Text newerIsInstalled \
  "A newer version of Odomira, $installedVersion, is installed.$\r$\n$\r$\nDo you want to replace it with version ${VERSION}?" \
  "En nyare version av Odomira, $installedVersion, är installerad.$\r$\n$\r$\nVill du ersätta den med version ${VERSION}?"

!insertmacro Text folderTitle \
  "Choose a folder" \
  "Välj en mapp"

!insertmacro Text folderSubtitle \
  "Where should Odomira be installed?" \
  "Var ska Odomira installeras?"

!insertmacro Text folder \
  "Folder" \
  "Mapp"

!insertmacro Text folderText \
  "Odomira keeps the journal in the folder of the program. Everyone who uses this computer may change the journal and add files there, so choose a folder that only Odomira uses." \
  "Odomira sparar journalen i programmets mapp. Alla som använder datorn får ändra journalen och lägga till filer där, så välj en mapp som bara Odomira använder."

!insertmacro Text folderIsNotOurs \
  "Odomira can't be installed in$\r$\n$INSTDIR$\r$\n$\r$\nOdomira needs a folder of its own, because everyone who uses this computer may add and change files in it. Choose a new or an empty folder that isn't reached through a link." \
  "Det går inte att installera Odomira i$\r$\n$INSTDIR$\r$\n$\r$\nOdomira behöver en egen mapp, eftersom alla som använder datorn får lägga till och ändra filer i den. Välj en ny eller tom mapp som inte nås via en länk."

!insertmacro Text folderCannotBeMade \
  "The folder$\r$\n$INSTDIR$\r$\ncould not be created." \
  "Det gick inte att skapa mappen$\r$\n$INSTDIR"

!insertmacro Text folderCannotBeTakenOver \
  "The permissions for$\r$\n$INSTDIR$\r$\ncould not be set (error $7), so Odomira was not installed. Choose another folder." \
  "Det gick inte att ange behörigheter för$\r$\n$INSTDIR$\r$\n(fel $7). Odomira har inte installerats. Välj en annan mapp."

!insertmacro Text isInstalledElsewhere \
  "Odomira is already installed in$\r$\n$installedFolder$\r$\n$\r$\nTo move it, uninstall it and keep the journal, install it in the new folder, and then replace the empty ${JOURNAL} there with yours." \
  "Odomira är redan installerat i$\r$\n$installedFolder$\r$\n$\r$\nOm du vill flytta det avinstallerar du det och behåller journalen, installerar det i den nya mappen och ersätter sedan den tomma ${JOURNAL} där med din."

!insertmacro Text isRunning \
  "Odomira is running.$\r$\n$\r$\nSave the journal, close Odomira, and then select Retry." \
  "Odomira körs.$\r$\n$\r$\nSpara journalen, avsluta Odomira och välj sedan Försök igen."

!insertmacro Text nothingChanged \
  "Nothing was changed." \
  "Ingenting har ändrats."

!insertmacro Text cannotWrite \
  "The file$\r$\n$0$\r$\ncould not be written.$\r$\n$\r$\nSelect Retry to try again, or Cancel to stop the installation." \
  "Det gick inte att skriva till filen$\r$\n$0$\r$\n$\r$\nVälj Försök igen, eller Avbryt om du vill avbryta installationen."

!insertmacro Text rightsFailed \
  "The permissions for$\r$\n$0$\r$\ncould not be set (error $7). Users who aren't administrators might not be able to save the journal or the settings." \
  "Det gick inte att ange behörigheter för$\r$\n$0$\r$\n(fel $7). Användare som inte är administratörer kanske inte kan spara journalen eller inställningarna."

!insertmacro Text installingTitle \
  "Installing" \
  "Installerar"

!insertmacro Text installingSubtitle \
  "Wait while Odomira is being installed." \
  "Vänta medan Odomira installeras."

!insertmacro Text finishTitle \
  "Odomira is installed" \
  "Odomira är installerat"

!insertmacro Text finishText \
  "Everyone who uses this computer can find Odomira on the Start menu." \
  "Alla som använder datorn hittar Odomira på Start-menyn."

!insertmacro Text readGuide \
  "Read the guide" \
  "Läs handboken"

!insertmacro Text startNow \
  "&Start Odomira" \
  "&Starta Odomira"

!insertmacro Text desktopShortcut \
  "Create a shortcut on the &desktop" \
  "Skapa en genväg på skriv&bordet"

!insertmacro Text uninstallTitle \
  "Uninstall Odomira" \
  "Avinstallera Odomira"

!insertmacro Text uninstallSubtitle \
  "Do you want to keep the journal?" \
  "Vill du behålla journalen?"

!insertmacro Text uninstallText \
  "Odomira will be removed from $INSTDIR. If you keep the journal (${JOURNAL}), install Odomira in the same folder to use it again. Settings that you keep do not depend on the folder." \
  "Odomira tas bort från $INSTDIR. Om du behåller journalen (${JOURNAL}) installerar du Odomira i samma mapp för att använda den igen. Inställningar som du behåller är oberoende av mappen."

!insertmacro Text keepJournal \
  "&Keep the journal and the settings" \
  "&Behåll journalen och inställningarna"

!insertmacro Text deleteJournal \
  "&Permanently delete the journal and the settings" \
  "&Ta bort journalen och inställningarna permanent"

!insertmacro Text reallyDelete \
  "Do you want to permanently delete the journal and the settings?$\r$\n$\r$\n$INSTDIR\${JOURNAL}$\r$\n$\r$\nYou can't undo this." \
  "Vill du ta bort journalen och inställningarna permanent?$\r$\n$\r$\n$INSTDIR\${JOURNAL}$\r$\n$\r$\nDet går inte att ångra."

!insertmacro Text uninstallingTitle \
  "Uninstalling" \
  "Avinstallerar"

!insertmacro Text uninstallingSubtitle \
  "Wait while Odomira is being uninstalled." \
  "Vänta medan Odomira avinstalleras."

!insertmacro Text uninstalledTitle \
  "Odomira is uninstalled" \
  "Odomira är avinstallerat"

!insertmacro Text journalStays \
  "The journal is still here:$\r$\n$INSTDIR\${JOURNAL}$\r$\n$\r$\nThe settings are kept, too. To use the journal again, install Odomira in the same folder." \
  "Journalen finns kvar här:$\r$\n$INSTDIR\${JOURNAL}$\r$\n$\r$\nÄven inställningarna finns kvar. Om du vill använda journalen igen installerar du Odomira i samma mapp."

!insertmacro Text journalNotDeleted \
  "The settings are deleted, but the journal could not be deleted:$\r$\n$INSTDIR\${JOURNAL}" \
  "Inställningarna är borttagna, men det gick inte att ta bort journalen:$\r$\n$INSTDIR\${JOURNAL}"

!insertmacro Text settingsStay \
  "There was no journal in$\r$\n$INSTDIR$\r$\n$\r$\nThe settings are kept." \
  "Det fanns ingen journal i$\r$\n$INSTDIR$\r$\n$\r$\nInställningarna finns kvar."

!insertmacro Text otherFilesStay \
  "Files that were added to the folder are still here:$\r$\n$INSTDIR" \
  "Filer som har lagts till i mappen finns kvar här:$\r$\n$INSTDIR"

!insertmacro Text nothingStays \
  "The journal and the settings are deleted." \
  "Journalen och inställningarna är borttagna."
