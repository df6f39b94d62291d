; What the setup says beside the texts that NSIS brings along. Each text stands in both languages, one below the other.

!macro Text NAME ENGLISH SWEDISH
  LangString ${NAME} ${LANG_ENGLISH} `${ENGLISH}`
  LangString ${NAME} ${LANG_SWEDISH} `${SWEDISH}`
!macroend

!insertmacro Text welcomeTitle \
  "Odomira ${VERSION}" \
  "Odomira ${VERSION}"

!insertmacro Text welcomeText \
  "This installs Odomira, the driver's mileage journal, for everybody who uses this computer.$\r$\n$\r$\nJournal and settings of an earlier version stay as they are." \
  "Här installeras Odomira, bilförarens körjournal, för alla som använder datorn.$\r$\n$\r$\nEn tidigare versions journal och inställningar lämnas orörda."

!insertmacro Text folderTitle \
  "Choose the folder" \
  "Välj mapp"

!insertmacro Text folderSubtitle \
  "Where shall Odomira and its journal be?" \
  "Var ska Odomira och journalen finnas?"

!insertmacro Text folder \
  "Folder" \
  "Mapp"

!insertmacro Text folderText \
  "Odomira keeps its journal in the folder of the program. Everybody who uses this computer gets the right to change the journal there, so choose a folder for Odomira alone." \
  "Odomira sparar sin journal i programmets mapp. Alla som använder datorn får rätt att ändra journalen där, så välj en mapp för enbart Odomira."

!insertmacro Text folderIsNotOurs \
  "There are other files in$\r$\n$INSTDIR$\r$\n$\r$\nOdomira needs a folder of its own, because everybody who uses this computer may add and change files in it. Choose a new or an empty folder." \
  "Det finns andra filer i$\r$\n$INSTDIR$\r$\n$\r$\nOdomira behöver en egen mapp, eftersom alla som använder datorn får lägga till och ändra filer i den. Välj en ny eller tom mapp."

!insertmacro Text folderCannotBeMade \
  "The folder$\r$\n$INSTDIR$\r$\ncannot be created." \
  "Mappen$\r$\n$INSTDIR$\r$\nkan inte skapas."

!insertmacro Text isInstalledElsewhere \
  "Odomira is already installed in$\r$\n$installedFolder$\r$\n$\r$\nTo move it, uninstall it first; the journal is kept." \
  "Odomira är redan installerat i$\r$\n$installedFolder$\r$\n$\r$\nAvinstallera det först om det ska flyttas; journalen behålls."

!insertmacro Text isRunning \
  "Odomira is running. Save the journal and close Odomira, then choose Retry." \
  "Odomira är igång. Spara journalen och avsluta Odomira, och välj sedan Försök igen."

!insertmacro Text rightsFailed \
  "The rights of$\r$\n$0$\r$\ncannot be set (error $7). Users who are not administrators may be unable to save the journal or the settings." \
  "Rättigheterna för$\r$\n$0$\r$\nkan inte ställas in (fel $7). Användare som inte är administratörer kan kanske inte spara journalen eller inställningarna."

!insertmacro Text finishTitle \
  "Odomira is installed" \
  "Odomira är installerat"

!insertmacro Text finishText \
  "Everybody who uses this computer finds Odomira in the Start menu." \
  "Alla som använder datorn hittar Odomira på Start-menyn."

!insertmacro Text startNow \
  "Start Odomira" \
  "Starta Odomira"

!insertmacro Text uninstallTitle \
  "Uninstall Odomira" \
  "Avinstallera Odomira"

!insertmacro Text uninstallSubtitle \
  "What shall happen to the journal?" \
  "Vad ska hända med journalen?"

!insertmacro Text uninstallText \
  "Odomira will be removed from $INSTDIR. The journal (${JOURNAL}) and the settings can stay; a later setup in the same folder finds them again." \
  "Odomira tas bort från $INSTDIR. Journalen (${JOURNAL}) och inställningarna kan vara kvar; en senare installation i samma mapp hittar dem igen."

!insertmacro Text keepJournal \
  "Keep the journal and the settings" \
  "Behåll journalen och inställningarna"

!insertmacro Text deleteJournal \
  "Delete the journal and the settings for good" \
  "Ta bort journalen och inställningarna för gott"
