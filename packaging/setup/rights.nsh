; Rights, as the system's own security descriptors. Groups stand by their identifiers, because their names are translated:
; SY is the system, BA the administrators (S-1-5-32-544), BU everybody who uses the computer (S-1-5-32-545).
;
; P keeps out what a parent folder or key would hand down, so that the rights are the same wherever the user installs. The
; administrators own everything, because an owner may always change the rights.

; In the folder, users read, add files, and change and delete them: the journal, their copies of it, a new journal after
; they have moved a full one away. They may not make folders, and what they add is data, not programs.
!define JOURNAL_FOLDER "O:BAD:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;;0x1200ab;;;BU)(A;OIIO;0x13019f;;;BU)"
; What the computer's users start, one of them must not be able to replace.
!define PROGRAM_FILE "O:BAD:P(A;;FA;;;SY)(A;;FA;;;BA)(A;;0x1200a9;;;BU)"
; 0x2003f is exactly what the program asks for whenever it opens or makes a section: to read and write values, to make and
; list sub keys, to watch, and to link.
!define SETTINGS_RIGHTS "O:BAD:P(A;CI;KA;;;SY)(A;CI;KA;;;BA)(A;CI;0x2003f;;;BU)"

; Kinds of objects, as SetNamedSecurityInfo counts them.
!define FILE_RIGHTS 1
!define KEY_RIGHTS 4

; Owner, list of rights, and the list is protected from the parent's.
!define WHAT_IS_SET 0x80000005

; A disk that knows no rights, such as FAT, refuses them; there everybody may write anyway.
!define ERROR_INVALID_FUNCTION 1
!define ERROR_NOT_SUPPORTED 50

!macro GiveRights KIND OBJECT DESCRIPTOR
  StrCpy $0 "${OBJECT}"
  StrCpy $1 "${DESCRIPTOR}"
  StrCpy $2 ${KIND}
  Call GiveRights
!macroend

!macro PrepareKey KEY
  WriteRegStr HKLM "${KEY}" "" ""
  DeleteRegValue HKLM "${KEY}" ""
  !insertmacro GiveRights ${KEY_RIGHTS} "MACHINE\${KEY}" "${SETTINGS_RIGHTS}"
!macroend

; $0 the object, $1 its security descriptor as text, $2 its kind. A failure is told, because it is what the user would
; else find out from a journal that cannot be saved.
Function GiveRights
  StrCpy $7 0
  System::Call 'advapi32::ConvertStringSecurityDescriptorToSecurityDescriptorW(w r1, i 1, *p .r3, p 0) i .r4 ?e'
  Pop $7
  ${If} $4 <> 0
    System::Call 'advapi32::GetSecurityDescriptorOwner(p r3, *p .r5, *i .r4)'
    System::Call 'advapi32::GetSecurityDescriptorDacl(p r3, *i .r4, *p .r6, *i .r4)'
    System::Call 'advapi32::SetNamedSecurityInfoW(w r0, i r2, i ${WHAT_IS_SET}, p r5, p 0, p r6, p 0) i .r7'
    System::Call 'kernel32::LocalFree(p r3)'
  ${EndIf}
  ${If} $7 <> 0
  ${AndIf} $7 <> ${ERROR_INVALID_FUNCTION}
  ${AndIf} $7 <> ${ERROR_NOT_SUPPORTED}
    SetErrorLevel ${EXIT_RIGHTS}
    MessageBox MB_OK|MB_ICONEXCLAMATION "$(rightsFailed)" /SD IDOK
  ${EndIf}
FunctionEnd
