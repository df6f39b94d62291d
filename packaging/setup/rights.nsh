; Rights, as the system's own security descriptors. Groups stand by their identifiers, because their names are translated:
; SY is the system, BA the administrators (S-1-5-32-544), BU everybody who uses the computer (S-1-5-32-545), S-1-3-4
; whoever owns the file.
;
; P keeps out what a parent folder or key would hand down, so that the rights are the same wherever the user installs. The
; administrators own everything, because an owner may always change the rights, unless the list says what owners may do.

; While the setup works in the folder, nobody else puts anything into it.
!define LOCKED_FOLDER "O:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;;0x1200a9;;;BU)"
; After that, users read, add files, and change and delete them: the journal, their copies of it, a new journal after they
; have moved a full one away. They may not make folders, and what they add is data, not programs. Who adds a file owns it,
; and may do with it what every user may; changing its rights is not part of that.
!define ADDED_FILES "(A;OIIO;0x13019f;;;BU)(A;OIIO;0x13019f;;;S-1-3-4)"
!define JOURNAL_FOLDER "O:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;;0x1200ab;;;BU)${ADDED_FILES}"
; The same for a journal that was there before the folder had these rights.
!define JOURNAL_FILE "O:BAD:P(A;;FA;;;SY)(A;;FA;;;BA)(A;;0x13019f;;;BU)(A;;0x13019f;;;S-1-3-4)"
; Users must not be able to replace a program that others run.
!define PROGRAM_FILE "O:BAD:P(A;;FA;;;SY)(A;;FA;;;BA)(A;;0x1200a9;;;BU)"
; Users read the key of the settings, so that none of them makes keys or links beside the sections.
!define SETTINGS_RIGHTS "O:BAD:P(A;CI;KA;;;SY)(A;CI;KA;;;BA)(A;CI;KR;;;BU)"
; 0x2003f is exactly what the program asks for whenever it opens or makes a section: to read and write values, to make and
; list sub keys, to watch, and to link. It goes no further down, where the program has no keys.
!define SECTION_RIGHTS "O:BAD:P(A;CI;KA;;;SY)(A;CI;KA;;;BA)(A;;0x2003f;;;BU)"

; Owner, list of rights, and the list is protected from the parent's.
!define WHAT_IS_SET 0x80000005

; To read attributes and rights, and to set rights and owner.
!define FILE_ACCESS 0x000e0080
!define SHARE_ALL 7
!define OPEN_EXISTING 3
!define OPEN_ALWAYS 4
; Folders as well (FILE_FLAG_BACKUP_SEMANTICS), and of a link the link itself (FILE_FLAG_OPEN_REPARSE_POINT).
!define OPEN_ITSELF 0x02200000
!define INVALID_HANDLE -1

!define FILE_ATTRIBUTE_DIRECTORY 0x10
!define FILE_ATTRIBUTE_REPARSE_POINT 0x400
; A folder or a link.
!define NOT_PLAIN 0x410

!define HKEY_LOCAL_MACHINE_HANDLE -2147483646
!define KEY_ALL_ACCESS 0xf003f
!define REG_OPTION_OPEN_LINK 8
!define REG_LINK 6

; A disk that knows no rights, such as FAT, refuses them; there everybody may write anyway.
!define ERROR_INVALID_FUNCTION 1
!define ERROR_FILE_NOT_FOUND 2
!define ERROR_NOT_SUPPORTED 50
!define ERROR_TOO_MANY_LINKS 1142
!define ERROR_REPARSE_POINT_ENCOUNTERED 4395

; $3 an open handle, $1 the security descriptor as text. $7 becomes the error, or 0. The system stores it for this object
; alone: the functions that go by name would also walk down to everything below it, and users may have put links there.
Function StoreRights
  StrCpy $7 0
  System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW(w r1, i 1, *p .r4, p 0) i .r5 ?e'
  Pop $6
  ${If} $5 = 0
    StrCpy $7 $6
    Return
  ${EndIf}
  System::Call 'advapi32::SetKernelObjectSecurity(p r3, i ${WHAT_IS_SET}, p r4) i .r5 ?e'
  Pop $6
  System::Call 'kernel32::LocalFree(p r4)'
  ${If} $5 = 0
  ${AndIf} $6 <> ${ERROR_INVALID_FUNCTION}
  ${AndIf} $6 <> ${ERROR_NOT_SUPPORTED}
    StrCpy $7 $6
  ${EndIf}
FunctionEnd

; Sets the rights of a file or folder and leaves the error in $7. HOW says whether a missing file is made.
!macro SetFileRights PATH DESCRIPTOR HOW
  StrCpy $0 "${PATH}"
  StrCpy $1 "${DESCRIPTOR}"
  StrCpy $2 ${HOW}
  Call SetFileRights
!macroend

; $0 the path, $1 the security descriptor as text, $2 how it is opened. A link is not followed, and a file that has another
; name elsewhere is left alone, because its rights are those of that other name, too.
Function SetFileRights
  System::Call 'kernel32::CreateFileW(w r0, i ${FILE_ACCESS}, i ${SHARE_ALL}, p 0, i r2, i ${OPEN_ITSELF}, p 0) p .r3 ?e'
  Pop $7
  ${If} $3 = ${INVALID_HANDLE}
    Return
  ${EndIf}
  ; The attributes come first, the number of names after six more numbers of which three are times.
  System::Call '*(i, l, l, l, i, i, i, i, i, i) p .r4'
  System::Call 'kernel32::GetFileInformationByHandle(p r3, p r4)'
  System::Call '*$4(i .r5, l, l, l, i, i, i, i .r6, i, i)'
  System::Free $4
  IntOp $4 $5 & ${FILE_ATTRIBUTE_REPARSE_POINT}
  IntOp $5 $5 & ${FILE_ATTRIBUTE_DIRECTORY}
  ${If} $4 <> 0
    StrCpy $7 ${ERROR_REPARSE_POINT_ENCOUNTERED}
  ${ElseIf} $5 = 0
  ${AndIf} $6 > 1
    StrCpy $7 ${ERROR_TOO_MANY_LINKS}
  ${Else}
    Call StoreRights
  ${EndIf}
  System::Call 'kernel32::CloseHandle(p r3)'
FunctionEnd

!macro GiveFileRights PATH DESCRIPTOR HOW
  !insertmacro SetFileRights "${PATH}" "${DESCRIPTOR}" "${HOW}"
  Call TellFailure
!macroend

; Opens the key $0 of HKEY_LOCAL_MACHINE: $3 its handle, $7 the error, or 0. A link that stands in the place of the key is
; deleted, and never followed: users may once have been able to put one there.
!macro OpenKeyItself UN
Function ${UN}OpenKeyItself
  System::Call 'advapi32::RegOpenKeyExW(p ${HKEY_LOCAL_MACHINE_HANDLE}, w r0, i ${REG_OPTION_OPEN_LINK}, \
    i ${KEY_ALL_ACCESS}, *p .r3) i .r7'
  ${If} $7 <> 0
    Return
  ${EndIf}
  System::Call 'advapi32::RegQueryValueExW(p r3, w "SymbolicLinkValue", p 0, *i .r4, p 0, p 0) i .r5'
  ${If} $5 = 0
  ${AndIf} $4 = ${REG_LINK}
    System::Call 'ntdll::NtDeleteKey(p r3)'
    System::Call 'advapi32::RegCloseKey(p r3)'
    StrCpy $7 ${ERROR_FILE_NOT_FOUND}
  ${EndIf}
FunctionEnd
!macroend
!insertmacro OpenKeyItself ""
!insertmacro OpenKeyItself "un."

!macro PrepareKey KEY DESCRIPTOR
  StrCpy $0 "${KEY}"
  StrCpy $1 "${DESCRIPTOR}"
  Call PrepareKey
!macroend

; Makes the key $0 of HKEY_LOCAL_MACHINE if it is missing, and gives it the rights $1.
Function PrepareKey
  Call OpenKeyItself
  ${If} $7 = ${ERROR_FILE_NOT_FOUND}
    System::Call 'advapi32::RegCreateKeyExW(p ${HKEY_LOCAL_MACHINE_HANDLE}, w r0, i 0, p 0, i 0, i ${KEY_ALL_ACCESS}, p 0, \
      *p .r3, p 0) i .r7'
    ${If} $7 = 0
      System::Call 'advapi32::RegCloseKey(p r3)'
      Call OpenKeyItself
    ${EndIf}
  ${EndIf}
  ${If} $7 = 0
    Call StoreRights
    System::Call 'advapi32::RegCloseKey(p r3)'
  ${EndIf}
  Call TellFailure
FunctionEnd

; $0 the object, $7 the error. Shows the error; otherwise the user would notice it only when a save fails.
Function TellFailure
  ${If} $7 <> 0
    SetErrorLevel ${EXIT_RIGHTS}
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(rightsFailed)" /SD IDOK
  ${EndIf}
FunctionEnd

!macro DeleteValue NAME
  ${If} $7 = 0
    System::Call 'advapi32::RegDeleteValueW(p r3, w "${NAME}")'
  ${EndIf}
!macroend

; Deletes the key that un.OpenKeyItself has opened, if nothing is in it: what the program has not made is not the
; uninstaller's to delete.
Function un.DeleteIfEmpty
  ${If} $7 <> 0
    Return
  ${EndIf}
  System::Call 'advapi32::RegQueryInfoKeyW(p r3, p 0, p 0, p 0, *i .r4, p 0, p 0, *i .r5, p 0, p 0, p 0, p 0)'
  ${If} $4 = 0
  ${AndIf} $5 = 0
    System::Call 'ntdll::NtDeleteKey(p r3)'
  ${EndIf}
  System::Call 'advapi32::RegCloseKey(p r3)'
FunctionEnd
