; The setup program: odomira-<version>-setup.exe, for 64-bit Windows, in English and Swedish.
;
; Odomira keeps its journal beside its program file and its settings under HKEY_LOCAL_MACHINE, and without the rights to
; both it loses them without a word. Giving those rights to everybody who uses the computer is what this setup is for.
;
; packaging/package calls it with VERSION, STAGE (the folder of the files to install) and OUTFILE.
;
; Exit codes: 0 done, 1 cancelled, 2 failed, 3 Odomira is running, 4 the folder cannot be used, 5 installed, but the rights
; could not be given, 6 a newer version is installed.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel admin
ManifestDPIAware true
ManifestSupportedOS Win10
AllowSkipFiles off
; The pictures of the pages have the time of somebody's checkout, which is not to get in; the program has the commit's.
SetDateSave off
ShowInstDetails nevershow
ShowUninstDetails nevershow

!define NAME "Odomira"
!define PUBLISHER "Brenholt"
!define HOME_PAGE "https://odomira.example.com/"
!define PROGRAM "odomira.exe"
!define JOURNAL "datasource.jrn"
!define UNINSTALLER "uninstall.exe"
!define GUIDE_ENGLISH "guide.html" ; the program knows both names
!define GUIDE_SWEDISH "guide.sv.html"
!define GUIDE_LINK_COLOR 0066CC
!define READ_ME "ReadMe.txt" ; of the portable folder
!define NO_FOLDER "\${NAME}"
!define SETTINGS_KEY "Software\Velmora\Tav"
; Only administrators write to this key. It keeps the folder of the journal when the program is uninstalled.
!define SETUP_KEY "Software\Velmora\Setup"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"
!define ICON "..\..\resources\odomira.ico"
!define EXIT_CANCELLED 1
!define EXIT_RUNNING 3
!define EXIT_FOLDER 4
!define EXIT_RIGHTS 5
!define EXIT_NEWER 6

!define FILE_ATTRIBUTE_READONLY 1
!define INVALID_FILE_ATTRIBUTES -1
!define GENERIC_WRITE 0x40000000
!define ERROR_ACCESS_DENIED 5
!define ERROR_SHARING_VIOLATION 32

Name "${NAME}"
OutFile "${OUTFILE}"
; What a user picks with Browse gets this name behind it. As it stands it says that no /D=FOLDER was given; .onInit then
; takes the drive of the system.
InstallDir "${NO_FOLDER}"
BrandingText "${NAME} ${VERSION}"
Caption "$(caption)"
UninstallCaption "$(uninstallCaption)"
FileErrorText "" "$(cannotWrite)"
; The program is small, and the numbers would have a decimal point in Swedish, too.
SpaceTexts none

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WordFunc.nsh
!include nsDialogs.nsh

Var installedFolder  ; where an earlier setup has put the program; empty if it has not
Var installedVersion ; and which version that is
Var journalFolder    ; where an earlier setup has put the program, which may have been uninstalled since
Var welcome          ; what the first page says
Var farewell         ; what the uninstaller's last page says
Var deleteJournal    ; 1 if the user wants the uninstaller to delete journal and settings
Var keepButton
Var deleteButton

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "setup.bmp"
!define MUI_UNWELCOMEFINISHPAGE_BITMAP "setup.bmp"
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TITLE "$(welcomeTitle)"
!define MUI_WELCOMEPAGE_TEXT "$welcome"
!define MUI_PAGE_CUSTOMFUNCTION_PRE PrepareWelcome
!define MUI_PAGE_CUSTOMFUNCTION_SHOW NameNextButton
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveWelcome
!insertmacro MUI_PAGE_WELCOME
!define MUI_PAGE_HEADER_TEXT "$(folderTitle)"
!define MUI_PAGE_HEADER_SUBTEXT "$(folderSubtitle)"
!define MUI_PAGE_CUSTOMFUNCTION_PRE SkipFolderOnUpgrade
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveFolder
!define MUI_DIRECTORYPAGE_TEXT_TOP "$(folderText)"
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "$(folder)"
!insertmacro MUI_PAGE_DIRECTORY
!define MUI_PAGE_HEADER_TEXT "$(installingTitle)"
!define MUI_PAGE_HEADER_SUBTEXT "$(installingSubtitle)"
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE "$(finishTitle)"
!define MUI_FINISHPAGE_TEXT "$(finishText)"
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "$(startNow)"
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram
; What the page has for a read-me is a check box like any other.
!define MUI_FINISHPAGE_SHOWREADME ""
!define MUI_FINISHPAGE_SHOWREADME_TEXT "$(desktopShortcut)"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!define MUI_FINISHPAGE_SHOWREADME_FUNCTION MakeDesktopShortcut
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
!define MUI_PAGE_CUSTOMFUNCTION_SHOW AddGuideLink
!insertmacro MUI_PAGE_FINISH

UninstPage custom un.ShowJournalPage un.LeaveJournalPage
!define MUI_PAGE_HEADER_TEXT "$(uninstallingTitle)"
!define MUI_PAGE_HEADER_SUBTEXT "$(uninstallingSubtitle)"
!insertmacro MUI_UNPAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE "$(uninstalledTitle)"
!define MUI_FINISHPAGE_TEXT "$farewell"
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
!insertmacro MUI_UNPAGE_FINISH

!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Swedish"
!include texts.nsh
!include rights.nsh

!searchparse "${VERSION}" "" MAJOR "." MINOR "." PATCH
; The same four numbers as in the program's own version record.
VIProductVersion "${MAJOR}.${MINOR}.0.${PATCH}"
VIFileVersion "${MAJOR}.${MINOR}.0.${PATCH}"
VIAddVersionKey /LANG=${LANG_ENGLISH} "ProductName" "${NAME}"
VIAddVersionKey /LANG=${LANG_ENGLISH} "CompanyName" "${PUBLISHER}"
VIAddVersionKey /LANG=${LANG_ENGLISH} "FileDescription" "${NAME} setup"
VIAddVersionKey /LANG=${LANG_ENGLISH} "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=${LANG_ENGLISH} "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=${LANG_ENGLISH} "LegalCopyright" "© ${PUBLISHER}"

; ---- What setup and uninstaller share ----------------------------------------------------------------------------------

; Says why nothing can be done, and ends. Silent, only the exit code says it.
!macro Refuse TEXT CODE
  MessageBox MB_OK|MB_ICONSTOP "${TEXT}" /SD IDOK
  SetErrorLevel ${CODE}
  Quit
!macroend

; $0 the path of a file: $2 becomes the error of opening it for writing, or 0.
!macro TryToWrite UN
Function ${UN}TryToWrite
  System::Call 'kernel32::CreateFileW(w r0, i ${GENERIC_WRITE}, i ${SHARE_ALL}, p 0, i ${OPEN_EXISTING}, i 0, p 0) p .r3 ?e'
  Pop $2
  ${If} $3 <> ${INVALID_HANDLE}
    System::Call 'kernel32::CloseHandle(p r3)'
    StrCpy $2 0
  ${EndIf}
FunctionEnd
!macroend
!insertmacro TryToWrite ""
!insertmacro TryToWrite "un."

; Pushes 1 if the program runs from its folder. A program file that is running cannot be opened for writing, whoever runs it
; and in whatever session. One that is marked as read-only cannot either, so the mark is taken off for the moment.
!macro IsRunning UN
Function ${UN}IsRunning
  StrCpy $0 "$INSTDIR\${PROGRAM}"
  System::Call 'kernel32::GetFileAttributesW(w r0) i .r1'
  Call ${UN}TryToWrite
  IntOp $3 $1 & ${FILE_ATTRIBUTE_READONLY}
  ${If} $2 = ${ERROR_ACCESS_DENIED}
  ${AndIf} $1 <> ${INVALID_FILE_ATTRIBUTES}
  ${AndIf} $3 <> 0
    IntOp $3 $1 ^ ${FILE_ATTRIBUTE_READONLY}
    System::Call 'kernel32::SetFileAttributesW(w r0, i r3)'
    Call ${UN}TryToWrite
    System::Call 'kernel32::SetFileAttributesW(w r0, i r1)'
  ${EndIf}
  ${If} $2 = ${ERROR_SHARING_VIOLATION}
    Push 1
  ${Else}
    Push 0
  ${EndIf}
FunctionEnd
!macroend
!insertmacro IsRunning ""
!insertmacro IsRunning "un."

; The user may have a journal to save, so the program is never closed from here. This is asked before anything is changed.
!macro WaitUntilClosed UN
Function ${UN}WaitUntilClosed
  again:
  Call ${UN}IsRunning
  Pop $0
  ${If} $0 = 0
    Return
  ${EndIf}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(isRunning)" /SD IDCANCEL IDRETRY again
  MessageBox MB_OK|MB_ICONINFORMATION "$(nothingChanged)" /SD IDOK
  SetErrorLevel ${EXIT_RUNNING}
  Quit
FunctionEnd
!macroend
!insertmacro WaitUntilClosed ""
!insertmacro WaitUntilClosed "un."

; The language of an earlier setup, if there was one.
!macro ReadLanguage
  ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "Setup Language"
  ${If} $0 == ${LANG_SWEDISH}
  ${OrIf} $0 == ${LANG_ENGLISH}
    StrCpy $LANGUAGE $0
  ${EndIf}
!macroend

!macro RemoveGuideFromStartMenu
  Delete "$SMPROGRAMS\${GUIDE_NAME_ENGLISH}.lnk"
  Delete "$SMPROGRAMS\${GUIDE_NAME_SWEDISH}.lnk"
!macroend

; Everything is for all users of the computer, and in the registry view that the 64-bit program sees.
!macro ForAllUsers
  SetRegView 64
  SetShellVarContext all
!macroend

; ---- Setup -------------------------------------------------------------------------------------------------------------

Function .onInit
  !insertmacro ForAllUsers
  Call FindInstalled
  Call ChooseLanguage
  ${If} $INSTDIR == "${NO_FOLDER}"
    Call ProposeFolder
  ${ElseIf} $installedFolder != ""
  ${AndIf} $installedFolder != $INSTDIR
    !insertmacro Refuse "$(isInstalledElsewhere)" ${EXIT_FOLDER}
  ${EndIf}
  ${If} $installedFolder != ""
    Call AskBeforeOlder
    Pop $0
    ${If} $0 = 1
      SetErrorLevel ${EXIT_CANCELLED}
      Quit
    ${EndIf}
  ${EndIf}
FunctionEnd

Function FindInstalled
  ReadRegStr $journalFolder HKLM "${SETUP_KEY}" "Folder"
  ReadRegStr $installedFolder HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ReadRegStr $installedVersion HKLM "${UNINSTALL_KEY}" "DisplayVersion"
  ${Unless} ${FileExists} "$installedFolder\${UNINSTALLER}"
    StrCpy $installedFolder ""
  ${EndUnless}
FunctionEnd

; /LANG=en or /LANG=sv decides; else the language of an earlier setup; else the user is asked. A silent setup takes the
; language of the system if it is one of the two, and English if not.
Function ChooseLanguage
  ${GetParameters} $0
  ${GetOptions} $0 "/LANG=" $1
  ${If} $1 == "sv"
    StrCpy $LANGUAGE ${LANG_SWEDISH}
  ${ElseIf} $1 == "en"
    StrCpy $LANGUAGE ${LANG_ENGLISH}
  ${Else}
    ReadRegStr $0 HKLM "${UNINSTALL_KEY}" "Setup Language"
    ${If} $0 != ""
      !insertmacro ReadLanguage
    ${ElseUnless} ${Silent}
      Call AskLanguage
    ${EndIf}
  ${EndIf}
FunctionEnd

!define TDF_ALLOW_DIALOG_CANCELLATION 8
!define TDCBF_CANCEL_BUTTON 8
!define IDI_SETUP 103

; A task dialog, because its Cancel is in the language of Windows, as the question is ($LANGUAGE is that of the system until
; a button is chosen). The identifiers of the buttons are those of the languages. A failure leaves the system's language.
Function AskLanguage
  System::Call 'kernel32::GetModuleHandleW(p 0) p .r0'
  System::Call '*(&w64 "$(caption)") p .r1'
  System::Call '*(&w128 "$(whichLanguage)") p .r2'
  System::Call '*(&w16 "English") p .r3'
  System::Call '*(&w16 "Svenska") p .r4'
  System::Call '*(i ${LANG_ENGLISH}, p r3, i ${LANG_SWEDISH}, p r4) p .r5'
  ; Size, owner, module, flags, common buttons, title, icon, instruction, text, buttons, default button; then what is not
  ; used: radio buttons, check box, details, footer, callback and width.
  System::Call '*(i 160, p 0, p r0, i ${TDF_ALLOW_DIALOG_CANCELLATION}, i ${TDCBF_CANCEL_BUTTON}, p r1, p ${IDI_SETUP}, \
    p r2, p 0, i 2, p r5, i $LANGUAGE, i 0, p 0, i 0, p 0, p 0, p 0, p 0, p 0, p 0, p 0, p 0, i 0) p .r6'
  System::Call 'comctl32::TaskDialogIndirect(p r6, *i .r7, p 0, p 0) i .r8'
  ${For} $9 1 6
    System::Call 'kernel32::GlobalFree(p r$9)'
  ${Next}
  ${If} $8 <> 0
    Return
  ${EndIf}
  ${If} $7 <> ${LANG_ENGLISH}
  ${AndIf} $7 <> ${LANG_SWEDISH}
    SetErrorLevel ${EXIT_CANCELLED}
    Quit
  ${EndIf}
  StrCpy $LANGUAGE $7
FunctionEnd

; Where the journal is, if there has been a setup.
Function ProposeFolder
  ${If} $installedFolder != ""
    StrCpy $INSTDIR $installedFolder
  ${ElseIf} $journalFolder != ""
    StrCpy $INSTDIR $journalFolder
  ${Else}
    StrCpy $0 $WINDIR 2
    StrCpy $INSTDIR "$0\${NAME}"
  ${EndIf}
FunctionEnd

; Pushes 1 if the installed version is newer and the user wants to keep it: an older program may not know what a newer one
; has stored. A message box that cannot be shown keeps it. A silent setup ends.
Function AskBeforeOlder
  ${VersionCompare} "$installedVersion" "${VERSION}" $0
  ${If} $0 <> 1
    Push 0
    Return
  ${EndIf}
  ${If} ${Silent}
    SetErrorLevel ${EXIT_NEWER}
    Quit
  ${EndIf}
  ${If} ${Cmd} `MessageBox MB_YESNO|MB_ICONEXCLAMATION|MB_DEFBUTTON2 "$(newerIsInstalled)" IDYES`
    Push 0
  ${Else}
    Push 1
  ${EndIf}
FunctionEnd

; The same for a program in the folder that no setup has registered, such as that of the portable folder.
Function AskBeforeOlderInFolder
  ClearErrors
  GetDLLVersion "$INSTDIR\${PROGRAM}" $0 $1
  ${If} $installedFolder != ""
  ${OrIf} ${Errors}
    Push 0
    Return
  ${EndIf}
  IntOp $2 $0 >> 16
  IntOp $3 $0 & 0xFFFF
  IntOp $4 $1 & 0xFFFF
  StrCpy $installedVersion "$2.$3.$4" ; the third of the four numbers is always 0
  Call AskBeforeOlder
FunctionEnd

Function PrepareWelcome
  ${If} $installedFolder == ""
    StrCpy $welcome "$(welcomeText)"
  ${Else}
    StrCpy $welcome "$(upgradeText)"
  ${EndIf}
FunctionEnd

; There is no folder to choose in an upgrade: the button installs at once.
Function NameNextButton
  ${If} $installedFolder == ""
    Return
  ${EndIf}
  ${VersionCompare} "${VERSION}" "$installedVersion" $0
  ${If} $0 = 1
    SendMessage $mui.Button.Next ${WM_SETTEXT} 0 "STR:$(upgrade)"
  ${Else}
    SendMessage $mui.Button.Next ${WM_SETTEXT} 0 "STR:$(^InstallBtn)"
  ${EndIf}
FunctionEnd

Function LeaveWelcome
  ${If} $installedFolder != ""
    Call WaitUntilClosed
  ${EndIf}
FunctionEnd

; An upgrade stays where the journal is.
Function SkipFolderOnUpgrade
  ${If} $installedFolder != ""
    Abort
  ${EndIf}
FunctionEnd

Function LeaveFolder
  Call IsFolderOurs
  Pop $0
  ${If} $0 <> 1
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(folderIsNotOurs)"
    Abort
  ${EndIf}
  Call AskBeforeOlderInFolder
  Pop $0
  ${If} $0 = 1
    Abort
  ${EndIf}
  Call WaitUntilClosed
FunctionEnd

; Pushes 1 if the folder is new, if an earlier setup has registered it, or if it holds nothing but files of Odomira. Its
; rights are going to be those of a journal folder, which must not happen to a folder that serves another purpose. A whole
; drive is never ours, and neither is a folder that a link leads to: it is not where it seems to be.
Function IsFolderOurs
  System::Call 'kernel32::GetFullPathNameW(w "$INSTDIR", i ${NSIS_MAX_STRLEN}, w .r0, p 0)'
  StrCpy $INSTDIR $0
  StrLen $0 $INSTDIR
  Call IsReachedByLink
  Pop $1
  ${If} $0 <= 3
  ${OrIf} $1 = 1
    Push 0
  ${ElseIf} $INSTDIR == $installedFolder
  ${OrIf} $INSTDIR == $journalFolder
    Push 1
  ${Else}
    Call HoldsOnlyOurFiles
  ${EndIf}
FunctionEnd

; Pushes 1 if the folder or one above it is a link, such as a junction.
Function IsReachedByLink
  Push $0
  StrCpy $0 $INSTDIR
  ${Do}
    System::Call 'kernel32::GetFileAttributesW(w r0) i .r1'
    IntOp $2 $1 & ${FILE_ATTRIBUTE_REPARSE_POINT}
    ${If} $1 <> ${INVALID_FILE_ATTRIBUTES}
    ${AndIf} $2 <> 0
      Pop $0
      Push 1
      Return
    ${EndIf}
    ${GetParent} $0 $0
    StrLen $1 $0
  ${LoopUntil} $1 <= 3
  Pop $0
  Push 0
FunctionEnd

; Pushes 1 if the folder does not exist yet or holds nothing but plain files with the names of Odomira's. One whose content
; cannot be listed may hold anything.
Function HoldsOnlyOurFiles
  System::Call 'kernel32::GetFileAttributesW(w "$INSTDIR") i .r0'
  ${If} $0 = ${INVALID_FILE_ATTRIBUTES}
    Push 1
    Return
  ${EndIf}
  FindFirst $0 $1 "$INSTDIR\*"
  StrCpy $2 0
  ${DoUntil} $1 == ""
    StrCpy $2 1
    ${If} $1 != "."
    ${AndIf} $1 != ".."
      Call IsOurFile
      ${If} $2 = 0
        ${Break}
      ${EndIf}
    ${EndIf}
    FindNext $0 $1
  ${Loop}
  FindClose $0
  Push $2
FunctionEnd

; $1 the name of something in the folder: $2 becomes 1 if it is a plain file that the setup, the program or the portable
; folder has by this name.
Function IsOurFile
  System::Call 'kernel32::GetFileAttributesW(w "$INSTDIR\$1") i .r2'
  IntOp $2 $2 & ${NOT_PLAIN}
  ${If} $2 = 0
    ${If} $1 == "${PROGRAM}"
    ${OrIf} $1 == "${JOURNAL}"
    ${OrIf} $1 == "${UNINSTALLER}"
    ${OrIf} $1 == "${GUIDE_ENGLISH}"
    ${OrIf} $1 == "${GUIDE_SWEDISH}"
    ${OrIf} $1 == "${READ_ME}"
      StrCpy $2 1
      Return
    ${EndIf}
  ${EndIf}
  StrCpy $2 0
FunctionEnd

Section
  !insertmacro ForAllUsers
  Call RefuseOthersFolder
  ${If} ${Silent}
    Call AskBeforeOlderInFolder
    Pop $0
  ${EndIf}
  Call WaitUntilClosed

  ClearErrors
  SetOutPath "$INSTDIR"
  ${If} ${Errors}
    !insertmacro Refuse "$(folderCannotBeMade)" ${EXIT_FOLDER}
  ${EndIf}
  ; From here on nobody else adds or moves anything. What was put there in the last moment is found now.
  !insertmacro SetFileRights "$INSTDIR" "${LOCKED_FOLDER}" ${OPEN_EXISTING}
  ${If} $7 <> 0
    !insertmacro Refuse "$(folderCannotBeTakenOver)" ${EXIT_FOLDER}
  ${EndIf}
  Call RefuseOthersFolder
  Call InstallFiles
  !insertmacro GiveFileRights "$INSTDIR" "${JOURNAL_FOLDER}" ${OPEN_EXISTING}
  Call PrepareSettings
  Call SuggestLanguage
  CreateShortCut "$SMPROGRAMS\${NAME}.lnk" "$INSTDIR\${PROGRAM}"
  Call PutGuideOnStartMenu
  Call Register
SectionEnd

; The guide in the language of the setup. An upgrade may have changed the language, and the name of the entry with it.
Function PutGuideOnStartMenu
  !insertmacro RemoveGuideFromStartMenu
  CreateShortCut "$SMPROGRAMS\$(guideName).lnk" "$INSTDIR\$(guideFile)"
FunctionEnd

; A file could not be written. The folder goes on as the journal's.
Function .onInstFailed
  !insertmacro GiveFileRights "$INSTDIR" "${JOURNAL_FOLDER}" ${OPEN_EXISTING}
FunctionEnd

Function RefuseOthersFolder
  Call IsFolderOurs
  Pop $0
  ${If} $0 <> 1
    !insertmacro Refuse "$(folderIsNotOurs)" ${EXIT_FOLDER}
  ${EndIf}
FunctionEnd

; What has the name of a program file is deleted first: it may be another name of a file elsewhere, which would else be
; overwritten.
!macro InstallFile NAME
  Delete "$INSTDIR\${NAME}"
  File "${STAGE}\${NAME}"
  !insertmacro GiveFileRights "$INSTDIR\${NAME}" "${PROGRAM_FILE}" ${OPEN_EXISTING}
!macroend

; A journal that is there is neither written nor read; only its rights are set.
Function InstallFiles
  SetDateSave on
  !insertmacro InstallFile "${PROGRAM}"
  !insertmacro InstallFile "${GUIDE_ENGLISH}"
  !insertmacro InstallFile "${GUIDE_SWEDISH}"
  Delete "$INSTDIR\${UNINSTALLER}"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  !insertmacro GiveFileRights "$INSTDIR\${UNINSTALLER}" "${PROGRAM_FILE}" ${OPEN_EXISTING}
  ; The program would make a missing journal too, and it would belong to whoever starts it first.
  !insertmacro GiveFileRights "$INSTDIR\${JOURNAL}" "${JOURNAL_FILE}" ${OPEN_ALWAYS}
FunctionEnd

; Each section has its key, so that settings of an earlier time get the rights as well. The key above comes first: after
; that, nobody else can put anything in the place of a section.
Function PrepareSettings
  !insertmacro PrepareKey "${SETUP_KEY}" "${SETTINGS_RIGHTS}"
  !insertmacro PrepareKey "${SETTINGS_KEY}" "${SETTINGS_RIGHTS}"
  !insertmacro PrepareKey "${SETTINGS_KEY}\Settings" "${SECTION_RIGHTS}"
  !insertmacro PrepareKey "${SETTINGS_KEY}\Userinfo" "${SECTION_RIGHTS}"
  !insertmacro PrepareKey "${SETTINGS_KEY}\Print" "${SECTION_RIGHTS}"
FunctionEnd

; The language of the setup is the program's first language. One that is stored was chosen, and stays.
Function SuggestLanguage
  ClearErrors
  ReadRegStr $0 HKLM "${SETTINGS_KEY}\Settings" "Language"
  ${If} ${Errors}
    ${If} $LANGUAGE = ${LANG_SWEDISH}
      WriteRegStr HKLM "${SETTINGS_KEY}\Settings" "Language" "100"
    ${Else}
      WriteRegStr HKLM "${SETTINGS_KEY}\Settings" "Language" "0"
    ${EndIf}
  ${EndIf}
FunctionEnd

; The entry in "Apps & features".
Function Register
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "VersionMajor" ${MAJOR}
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "VersionMinor" ${MINOR}
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "URLInfoAbout" "${HOME_PAGE}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\${PROGRAM},0"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "NoRepair" 1
  SectionGetSize 0 $0
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" "EstimatedSize" $0
  WriteRegStr HKLM "${UNINSTALL_KEY}" "Setup Language" $LANGUAGE
  WriteRegStr HKLM "${SETUP_KEY}" "Folder" "$INSTDIR"
FunctionEnd

; Through the shell, so that the program runs as the user who is logged on and is not elevated.
Function StartProgram
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\${PROGRAM}"'
FunctionEnd

; The link that the page has of its own would run the browser with the rights of the setup.
Function AddGuideLink
  ${NSD_CreateLink} 120u 150u 195u 10u "$(readGuide)"
  Pop $0
  SetCtlColors $0 "${GUIDE_LINK_COLOR}" "${MUI_BGCOLOR}"
  ${NSD_OnClick} $0 OpenGuide
FunctionEnd

Function OpenGuide
  Pop $0
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\$(guideFile)"'
FunctionEnd

Function MakeDesktopShortcut
  CreateShortCut "$DESKTOP\${NAME}.lnk" "$INSTDIR\${PROGRAM}"
FunctionEnd

; ---- Uninstaller -------------------------------------------------------------------------------------------------------

Function un.onInit
  !insertmacro ForAllUsers
  !insertmacro ReadLanguage
  Call un.WaitUntilClosed
FunctionEnd

Function un.ShowJournalPage
  !insertmacro MUI_HEADER_TEXT "$(uninstallTitle)" "$(uninstallSubtitle)"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateLabel} 0 0 100% 36u "$(uninstallText)"
  Pop $0
  ${NSD_CreateFirstRadioButton} 0 44u 100% 12u "$(keepJournal)"
  Pop $keepButton
  ${NSD_CreateAdditionalRadioButton} 0 60u 100% 12u "$(deleteJournal)"
  Pop $deleteButton
  ${If} $deleteJournal == 1
    ${NSD_Check} $deleteButton
  ${Else}
    ${NSD_Check} $keepButton
  ${EndIf}
  GetDlgItem $0 $HWNDPARENT 1
  SendMessage $0 ${WM_SETTEXT} 0 "STR:$(^UninstallBtn)"
  nsDialogs::Show
FunctionEnd

Function un.LeaveJournalPage
  ${NSD_GetState} $deleteButton $deleteJournal
  ${If} $deleteJournal = 1
    ${Unless} ${Cmd} `MessageBox MB_YESNO|MB_ICONEXCLAMATION|MB_DEFBUTTON2 "$(reallyDelete)" IDYES`
      Abort
    ${EndUnless}
  ${EndIf}
  Call un.WaitUntilClosed
FunctionEnd

; What a user has put into the folder stays there, and the folder with it.
Section Uninstall
  !insertmacro ForAllUsers
  SetOutPath "$TEMP"
  Delete "$INSTDIR\${PROGRAM}"
  Delete "$INSTDIR\${GUIDE_ENGLISH}"
  Delete "$INSTDIR\${GUIDE_SWEDISH}"
  Delete "$INSTDIR\${UNINSTALLER}"
  ${If} $deleteJournal == 1
    Delete "$INSTDIR\${JOURNAL}"
    Call un.DeleteSettings
  ${EndIf}
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\${NAME}.lnk"
  !insertmacro RemoveGuideFromStartMenu
  Delete "$DESKTOP\${NAME}.lnk"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
  Call un.SayWhatStays
SectionEnd

!macro OpenForDeletion KEY
  StrCpy $0 "${KEY}"
  Call un.OpenKeyItself
!macroend

; Every value that the program stores, and then the keys if nothing is left in them. Users may have made keys and links in
; there: a deletion that walks down could end anywhere.
Function un.DeleteSettings
  !insertmacro OpenForDeletion "${SETTINGS_KEY}\Settings"
  !insertmacro DeleteValue "Langdenhet"
  !insertmacro DeleteValue "Language"
  Call un.DeleteIfEmpty
  !insertmacro OpenForDeletion "${SETTINGS_KEY}\Userinfo"
  !insertmacro DeleteValue "Company"
  !insertmacro DeleteValue "Name"
  !insertmacro DeleteValue "Surname"
  !insertmacro DeleteValue "Aktiverat_personnummer"
  !insertmacro DeleteValue "Personnummer"
  Call un.DeleteIfEmpty
  !insertmacro OpenForDeletion "${SETTINGS_KEY}\Print"
  !insertmacro DeleteValue "Heading"
  !insertmacro DeleteValue "UseDefaultHeading"
  Call un.DeleteIfEmpty
  !insertmacro OpenForDeletion "${SETTINGS_KEY}"
  Call un.DeleteIfEmpty
  !insertmacro OpenForDeletion "${SETUP_KEY}"
  !insertmacro DeleteValue "Folder"
  Call un.DeleteIfEmpty
  !insertmacro OpenForDeletion "Software\Velmora"
  Call un.DeleteIfEmpty
FunctionEnd

Function un.SayWhatStays
  ${If} ${FileExists} "$INSTDIR\${JOURNAL}"
  ${AndIf} $deleteJournal = 1
    StrCpy $farewell "$(journalNotDeleted)"
  ${ElseIf} ${FileExists} "$INSTDIR\${JOURNAL}"
    StrCpy $farewell "$(journalStays)"
  ${ElseIf} ${FileExists} "$INSTDIR"
    StrCpy $farewell "$(otherFilesStay)"
  ${ElseIf} $deleteJournal = 1
    StrCpy $farewell "$(nothingStays)"
  ${Else}
    StrCpy $farewell "$(settingsStay)"
  ${EndIf}
FunctionEnd
