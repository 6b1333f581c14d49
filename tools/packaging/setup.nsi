; The setup program. For one user, without an administrator's rights, or for all users; /S installs without asking:
;   /CurrentUser /AllUsers   for whom (default: for the user)
;   /D=FOLDER                where; the last argument, without quotation marks
; Exit codes: 0 done, 1 cancelled, 2 failed, 3 the program is running, 4 an administrator's rights are needed.
; The uninstaller takes /S and has the same exit codes.

Unicode true
SetCompressor /SOLID lzma
ManifestSupportedOS all
Name "${PRODUCT}"
OutFile "${OUTPUT}"
BrandingText "${PRODUCT} ${VERSION}"

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define FILE_TYPE "OSMIR.Panel"
!define EXIT_RUNNING 3
!define EXIT_NOT_ALLOWED 4

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_INSTDIR "${PRODUCT}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!include MultiUser.nsh
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${SIDE}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\Panel.exe"
!define MUI_FINISHPAGE_RUN_PARAMETERS "Mixer.panel"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey ProductName "${PRODUCT}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Setup of ${PRODUCT}"
VIAddVersionKey LegalCopyright ""

!macro InstallFixed SOURCE
    File "${SOURCE}"
!macroend

; One that is there already was left by the uninstaller of the old version, because the user had changed it.
!macro InstallChangeable SOURCE
    SetOverwrite off
    File "${SOURCE}"
    SetOverwrite on
!macroend

!macro RemoveFixed SOURCE FILE
    Delete "${FILE}"
!macroend

!macro RemoveChangeable SOURCE FILE
    GetFileTimeLocal "${SOURCE}" $0 $1
    ClearErrors
    GetFileTime "${FILE}" $2 $3
    ${IfNot} ${Errors}
    ${AndIf} $0 = $2 ; as numbers: one has a sign, the other has none
    ${AndIf} $1 = $3
        Delete "${FILE}"
    ${EndIf}
!macroend

!include "${FILES}"

; Before anything is touched: no program or library in the folder may be in use.
!macro RefuseWhileRunning PREFIX
Function ${PREFIX}RefuseWhileRunning
    Exch $R9
    again:
    StrCpy $R8 ""
    ${If} ${FileExists} "$R9\Panel.exe"
        !insertmacro TryFile Panel.exe
        !insertmacro TryFile Panelhost.dll
        !insertmacro TryFile OSMIRControlLib.dll
    ${EndIf}
    ${If} $R8 != ""
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$R8 is in use. Close all panels, then try again." /SD IDCANCEL IDRETRY again
        SetErrorLevel ${EXIT_RUNNING}
        Quit
    ${EndIf}
    Pop $R9
FunctionEnd
!macroend
!macro TryFile NAME
    ${If} ${FileExists} "$R9\${NAME}"
        ClearErrors
        FileOpen $R7 "$R9\${NAME}" a
        ${If} ${Errors}
            StrCpy $R8 "${NAME}"
        ${Else}
            FileClose $R7
        ${EndIf}
    ${EndIf}
!macroend
!insertmacro RefuseWhileRunning ""
!insertmacro RefuseWhileRunning "un."

Function .onInit
    StrCpy $R0 $INSTDIR ; of /D, which goes before what the mode proposes
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/AllUsers" $1
    ${IfNot} ${Errors}
    ${AndIf} ${Silent}
        UserInfo::GetAccountType
        Pop $1
        ${If} $1 != "Admin"
            SetErrorLevel ${EXIT_NOT_ALLOWED}
            Quit
        ${EndIf}
    ${EndIf}
    !insertmacro MULTIUSER_INIT
    ${If} $R0 != ""
        StrCpy $INSTDIR $R0
    ${EndIf}
FunctionEnd

; The one that is replaced goes first, and with it the files that are no more. Its uninstaller deletes itself from a copy
; alone, and only a copy can be waited for.
Function RemoveOldVersion
    ReadRegStr $R0 SHCTX "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $R0 != ""
    ${AndIf} ${FileExists} "$R0\uninstall.exe"
        Push $R0
        Call RefuseWhileRunning
        InitPluginsDir
        CopyFiles /SILENT "$R0\uninstall.exe" "$PLUGINSDIR\old.exe"
        ClearErrors
        ExecWait '"$PLUGINSDIR\old.exe" /S /$MultiUser.InstallMode _?=$R0' $R1
        ${If} ${Errors}
            StrCpy $R1 2
        ${EndIf}
        ${If} $R1 <> 0
            MessageBox MB_OK|MB_ICONSTOP "The old version in $R0 cannot be removed." /SD IDOK
            SetErrorLevel $R1
            Quit
        ${EndIf}
        Delete "$R0\uninstall.exe"
        RMDir "$R0"
    ${EndIf}
FunctionEnd

Section
    Push $INSTDIR
    Call RefuseWhileRunning
    Call RemoveOldVersion
    !insertmacro InstallFiles
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    CreateShortcut "$SMPROGRAMS\${PRODUCT}.lnk" "$INSTDIR\Panel.exe"

    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "OSMIR"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Panel.exe,0"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
    WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S /$MultiUser.InstallMode'
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
    WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" ${KILOBYTES}

    ; Panels are operated when they are opened; the second verb edits them.
    ReadRegStr $0 SHCTX "Software\Classes\.panel" ""
    ${If} $0 != ""
    ${AndIf} $0 != "${FILE_TYPE}"
        WriteRegStr SHCTX "Software\Classes\.panel" "${FILE_TYPE}.before" $0
    ${EndIf}
    WriteRegStr SHCTX "Software\Classes\.panel" "" "${FILE_TYPE}"
    WriteRegStr SHCTX "Software\Classes\.panel\OpenWithProgids" "${FILE_TYPE}" ""
    WriteRegStr SHCTX "Software\Classes\${FILE_TYPE}" "" "Panel"
    WriteRegStr SHCTX "Software\Classes\${FILE_TYPE}\DefaultIcon" "" "$INSTDIR\Panel.exe,0"
    WriteRegStr SHCTX "Software\Classes\${FILE_TYPE}\shell" "" "open"
    WriteRegStr SHCTX "Software\Classes\${FILE_TYPE}\shell\open" "" "&Operate"
    WriteRegStr SHCTX "Software\Classes\${FILE_TYPE}\shell\open\command" "" '"$INSTDIR\Panel.exe" "%1"'
    WriteRegStr SHCTX "Software\Classes\${FILE_TYPE}\shell\edit" "" "&Edit"
    WriteRegStr SHCTX "Software\Classes\${FILE_TYPE}\shell\edit\command" "" '"$INSTDIR\Panel.exe" --edit "%1"'
    ${RefreshShellIcons}
SectionEnd

; For whom it was installed is told by who has it in this folder.
Function un.onInit
    !insertmacro MULTIUSER_UNINIT
    ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
    ReadRegStr $1 HKLM "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 == $INSTDIR
        Call un.MultiUser.InstallMode.CurrentUser
    ${ElseIf} $1 == $INSTDIR
        Call un.MultiUser.InstallMode.AllUsers
        ${If} $MultiUser.InstallMode != "AllUsers"
            MessageBox MB_OK|MB_ICONSTOP "An administrator has to uninstall ${PRODUCT}." /SD IDOK
            SetErrorLevel ${EXIT_NOT_ALLOWED}
            Quit
        ${EndIf}
    ${EndIf}
FunctionEnd

Section Uninstall
    Push $INSTDIR
    Call un.RefuseWhileRunning
    !insertmacro RemoveFiles
    Delete "$SMPROGRAMS\${PRODUCT}.lnk"
    Delete "$INSTDIR\uninstall.exe"
    SetOutPath "$TEMP" ; a current folder cannot be removed
    RMDir "$INSTDIR"
    DeleteRegKey SHCTX "${UNINSTALL_KEY}"

    ReadRegStr $0 SHCTX "Software\Classes\.panel" ""
    ${If} $0 == "${FILE_TYPE}"
        ReadRegStr $1 SHCTX "Software\Classes\.panel" "${FILE_TYPE}.before"
        ${If} $1 != ""
            WriteRegStr SHCTX "Software\Classes\.panel" "" $1
        ${Else}
            DeleteRegValue SHCTX "Software\Classes\.panel" ""
        ${EndIf}
    ${EndIf}
    DeleteRegValue SHCTX "Software\Classes\.panel" "${FILE_TYPE}.before"
    DeleteRegValue SHCTX "Software\Classes\.panel\OpenWithProgids" "${FILE_TYPE}"
    DeleteRegKey /ifnosubkeys /ifnovalues SHCTX "Software\Classes\.panel\OpenWithProgids"
    DeleteRegKey /ifnosubkeys /ifnovalues SHCTX "Software\Classes\.panel"
    DeleteRegKey SHCTX "Software\Classes\${FILE_TYPE}"
    ${RefreshShellIcons}

    ; What the program keeps for whoever uninstalls it, but for the copies of panels that were not saved.
    SetShellVarContext current
    Delete "$LOCALAPPDATA\OSMIR\Panel\Recent*"
    Delete "$LOCALAPPDATA\OSMIR\Panel\Window*"
    Delete "$LOCALAPPDATA\OSMIR\Panel\Theme*"
    RMDir "$LOCALAPPDATA\OSMIR\Panel\Recovery"
    RMDir "$LOCALAPPDATA\OSMIR\Panel"
    RMDir "$LOCALAPPDATA\OSMIR"
    DeleteRegKey HKCU "Software\OSMIR\Panel" ; of earlier versions
    DeleteRegKey /ifnosubkeys /ifnovalues HKCU "Software\OSMIR"
SectionEnd
