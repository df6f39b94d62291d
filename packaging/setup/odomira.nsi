; The setup program: odomira-<version>-setup.exe, for 64-bit Windows, in English and Swedish.
;
; Odomira keeps its journal beside its program file and its settings under HKEY_LOCAL_MACHINE, and without the rights to
; both it loses them without a word. Giving those rights to everybody who uses the computer is what this setup is for.
;
; packaging/package calls it with VERSION, STAGE (the folder of the files to install) and OUTFILE.
;
; Exit codes: 0 done, 1 cancelled, 2 failed, 3 Odomira is running, 4 the folder cannot be used, 5 installed, but the rights
; could not be given.
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
!define NO_FOLDER "\${NAME}"
!define SETTINGS_KEY "Software\Velmora\Tav"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"
!define ICON "..\..\resources\odomira.ico"
!define EXIT_RUNNING 3
!define EXIT_FOLDER 4
!define EXIT_RIGHTS 5

Name "${NAME}"
OutFile "${OUTFILE}"
; What a user picks with Browse gets this name behind it. As it stands it says that no /D=FOLDER was given; .onInit then
; takes the drive of the system.
InstallDir "${NO_FOLDER}"
BrandingText "${NAME} ${VERSION}"

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include nsDialogs.nsh

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "setup.bmp"
!define MUI_ABORTWARNING
; The language of the setup is asked once and kept for upgrades and for the uninstaller.
!define MUI_LANGDLL_REGISTRY_ROOT HKLM
!define MUI_LANGDLL_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MUI_LANGDLL_REGISTRY_VALUENAME "Setup Language"
!define MUI_LANGDLL_WINDOWTITLE "${NAME}"
!define MUI_LANGDLL_INFO "Language / Språk:"

!define MUI_WELCOMEPAGE_TITLE "$(welcomeTitle)"
!define MUI_WELCOMEPAGE_TEXT "$(welcomeText)"
!insertmacro MUI_PAGE_WELCOME
!define MUI_PAGE_HEADER_TEXT "$(folderTitle)"
!define MUI_PAGE_HEADER_SUBTEXT "$(folderSubtitle)"
!define MUI_PAGE_CUSTOMFUNCTION_PRE SkipFolderOnUpgrade
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveFolder
!define MUI_DIRECTORYPAGE_TEXT_TOP "$(folderText)"
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "$(folder)"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE "$(finishTitle)"
!define MUI_FINISHPAGE_TEXT "$(finishText)"
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "$(startNow)"
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
!insertmacro MUI_PAGE_FINISH

UninstPage custom un.ShowJournalPage un.LeaveJournalPage
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Swedish"
!insertmacro MUI_RESERVEFILE_LANGDLL
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

Var installedFolder ; where an earlier setup has put the program; empty if it has not
Var deleteJournal   ; 1 if the user wants the uninstaller to delete journal and settings
Var keepButton
Var deleteButton

; ---- What setup and uninstaller share ----------------------------------------------------------------------------------

; Says why nothing can be done, and ends. Silent, only the exit code says it.
!macro Refuse TEXT CODE
  MessageBox MB_OK|MB_ICONSTOP "${TEXT}" /SD IDOK
  SetErrorLevel ${CODE}
  Quit
!macroend

; A program file that is running cannot be opened for writing, whoever runs it and in whatever session. The user may have
; a journal to save, so the program is never closed from here.
!macro WaitUntilClosed UN
Function ${UN}WaitUntilClosed
  ${Unless} ${FileExists} "$INSTDIR\${PROGRAM}"
    Return
  ${EndUnless}
  again:
  ClearErrors
  FileOpen $0 "$INSTDIR\${PROGRAM}" a
  ${Unless} ${Errors}
    FileClose $0
    Return
  ${EndUnless}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(isRunning)" /SD IDCANCEL IDRETRY again
  SetErrorLevel ${EXIT_RUNNING}
  Quit
FunctionEnd
!macroend
!insertmacro WaitUntilClosed ""
!insertmacro WaitUntilClosed "un."

; Everything is for all users of the computer, and in the registry view that the 64-bit program sees.
!macro ForAllUsers
  SetRegView 64
  SetShellVarContext all
!macroend

; ---- Setup -------------------------------------------------------------------------------------------------------------

Function .onInit
  !insertmacro ForAllUsers
  Call ChooseLanguage
  Call FindInstalled
  ${If} $INSTDIR == "${NO_FOLDER}"
    ${If} $installedFolder != ""
      StrCpy $INSTDIR $installedFolder
    ${Else}
      StrCpy $0 $WINDIR 2
      StrCpy $INSTDIR "$0\${NAME}"
    ${EndIf}
  ${ElseIf} $installedFolder != ""
  ${AndIf} $installedFolder != $INSTDIR
    !insertmacro Refuse "$(isInstalledElsewhere)" ${EXIT_FOLDER}
  ${EndIf}
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
    !insertmacro MUI_LANGDLL_DISPLAY
  ${EndIf}
FunctionEnd

Function FindInstalled
  ReadRegStr $installedFolder HKLM "${UNINSTALL_KEY}" "InstallLocation"
  ${Unless} ${FileExists} "$installedFolder\${UNINSTALLER}"
    StrCpy $installedFolder ""
  ${EndUnless}
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
  ${If} $0 != 1
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(folderIsNotOurs)"
    Abort
  ${EndIf}
  Call WaitUntilClosed
FunctionEnd

; Pushes 1 if the folder is new, empty, or Odomira's. Its rights are going to be those of a journal folder, which must not
; happen to a folder that serves another purpose. A whole drive is never ours.
Function IsFolderOurs
  StrLen $0 $INSTDIR
  ${If} $0 <= 3
    Push 0
    Return
  ${EndIf}
  ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
  ${OrIf} ${FileExists} "$INSTDIR\${JOURNAL}"
    Push 1
    Return
  ${EndIf}
  StrCpy $2 1
  FindFirst $0 $1 "$INSTDIR\*"
  ${DoUntil} $1 == ""
    ${If} $1 != "."
    ${AndIf} $1 != ".."
      StrCpy $2 0
    ${EndIf}
    FindNext $0 $1
  ${Loop}
  FindClose $0
  Push $2
FunctionEnd

Section
  !insertmacro ForAllUsers
  Call IsFolderOurs
  Pop $0
  ${If} $0 != 1
    !insertmacro Refuse "$(folderIsNotOurs)" ${EXIT_FOLDER}
  ${EndIf}
  Call WaitUntilClosed

  ClearErrors
  SetOutPath "$INSTDIR"
  ${If} ${Errors}
    !insertmacro Refuse "$(folderCannotBeMade)" ${EXIT_FOLDER}
  ${EndIf}
  ; The folder's rights come first: whatever is made in it later inherits them.
  !insertmacro GiveRights ${FILE_RIGHTS} "$INSTDIR" "${JOURNAL_FOLDER}"
  SetDateSave on
  File "${STAGE}\${PROGRAM}"
  !insertmacro GiveRights ${FILE_RIGHTS} "$INSTDIR\${PROGRAM}" "${PROGRAM_FILE}"
  WriteUninstaller "$INSTDIR\${UNINSTALLER}"
  !insertmacro GiveRights ${FILE_RIGHTS} "$INSTDIR\${UNINSTALLER}" "${PROGRAM_FILE}"
  Call MakeJournal
  Call PrepareSettings
  Call SuggestLanguage
  CreateShortCut "$SMPROGRAMS\${NAME}.lnk" "$INSTDIR\${PROGRAM}"
  Call Register
SectionEnd

; The program would make a missing journal too, and it would belong to whoever starts it first: made here, it belongs to
; the administrators like the rest of the folder. A journal that is there is not touched, not even opened.
Function MakeJournal
  ${Unless} ${FileExists} "$INSTDIR\${JOURNAL}"
    FileOpen $0 "$INSTDIR\${JOURNAL}" a
    FileClose $0
  ${EndUnless}
FunctionEnd

; Each section has its key, so that settings of an earlier time get the rights as well.
Function PrepareSettings
  !insertmacro PrepareKey "${SETTINGS_KEY}"
  !insertmacro PrepareKey "${SETTINGS_KEY}\Settings"
  !insertmacro PrepareKey "${SETTINGS_KEY}\Userinfo"
  !insertmacro PrepareKey "${SETTINGS_KEY}\Print"
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
  WriteRegStr HKLM "${UNINSTALL_KEY}" "${MUI_LANGDLL_REGISTRY_VALUENAME}" $LANGUAGE
FunctionEnd

; Through the shell, which runs as the user who is logged on: the setup's own rights are no business of the program.
Function StartProgram
  Exec '"$WINDIR\explorer.exe" "$INSTDIR\${PROGRAM}"'
FunctionEnd

; ---- Uninstaller -------------------------------------------------------------------------------------------------------

Function un.onInit
  !insertmacro ForAllUsers
  !insertmacro MUI_UNGETLANGUAGE
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
  Call un.WaitUntilClosed
FunctionEnd

; What a user has put into the folder stays there, and the folder with it.
Section Uninstall
  !insertmacro ForAllUsers
  SetOutPath "$TEMP"
  Delete "$INSTDIR\${PROGRAM}"
  Delete "$INSTDIR\${UNINSTALLER}"
  ${If} $deleteJournal == 1
    Delete "$INSTDIR\${JOURNAL}"
    DeleteRegKey HKLM "${SETTINGS_KEY}"
    DeleteRegKey /ifempty HKLM "Software\Velmora"
  ${EndIf}
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\${NAME}.lnk"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
SectionEnd
