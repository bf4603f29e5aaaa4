; The set-up program of Nullwright: for one user without more rights, or for all users of the
; machine. ./package gives VERSION, COPYRIGHT, STAGE (the folder with the files), OUTPUT, SIZE_KB,
; ICON and, when the console program is there, CLI.
;
; Switches: /S silent, /AllUsers or /CurrentUser, /D=FOLDER (last, without quotes),
; /Parts=StartMenu,Desktop,Operations,Explorer,SendTo,Path (exactly these).
; Exit codes: 0 done, 1 cancelled, 2 failed, 3 the program is running, 4 Windows is too old,
; 5 administrator rights are missing.

Unicode true
Target amd64-unicode
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include WinVer.nsh

!define PUBLISHER "Corvane Systems"
!define APPS_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Nullwright"
!define CLASSES "Software\Classes"
!define PROGID "Nullwright.Operation"
!define OLDEST_BUILD 18362 ; Windows 10, version 1903
!define EXIT_RUNNING 3
!define EXIT_OLD_WINDOWS 4
!define EXIT_RIGHTS 5

Name "Nullwright"
OutFile "${OUTPUT}"
; What is chosen by "Browse" gets the last part of this added: the program wants a folder of its own.
; For the rest it is no folder, so that it tells a start without /D; ApplyMode says the usual ones.
!define NO_FOLDER "\Nullwright"
InstallDir "${NO_FOLDER}"
RequestExecutionLevel user
SetCompressor /SOLID lzma
CRCCheck force
ManifestDPIAware true
ManifestSupportedOS Win10
SetDateSave on
BrandingText "Nullwright ${VERSION}"
ShowInstDetails nevershow
ShowUninstDetails nevershow
VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Nullwright"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Nullwright set-up"
VIAddVersionKey "CompanyName" "${PUBLISHER}"
VIAddVersionKey "LegalCopyright" "${COPYRIGHT}"

Var AllUsers    ; 1: for all users of the machine
Var ModeGiven   ; 1: by a switch
Var FolderGiven ; by /D
Var Parts       ; ",StartMenu,..," as chosen now or by the installation that is replaced
Var Replaced    ; the folder of the installation that is replaced, or empty
Var ForOne
Var ForAll

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Start Nullwright"
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram
Page custom ShowModePage LeaveModePage
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

!addincludedir setup ; from the top of the project
!include path.nsh
!insertmacro PathFunctions ""
!insertmacro PathFunctions "un."

; ---- What set-up and removal share ---------------------------------------------------------------

; Waits until a program does not run, or ends with an exit code of its own. A running program's file
; cannot be opened for writing: this sees it in every session of the machine.
!macro RefuseWhileRunning program
    ${Do}
        System::Call 'kernel32::CreateFileW(w "${program}", i 0xC0000000, i 7, p 0, i 3, i 0, p 0) p .r0 ?e'
        Pop $1
        ${If} $0 P<> -1
            System::Call 'kernel32::CloseHandle(p r0)'
            ${ExitDo}
        ${EndIf}
        ${If} $1 <> 32 ; ERROR_SHARING_VIOLATION
            ${ExitDo}
        ${EndIf}
        ${If} ${Silent}
            SetErrorLevel ${EXIT_RUNNING}
            Quit
        ${EndIf}
        ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Nullwright is running. Let it finish and close it, then try again." IDCANCEL`
            SetErrorLevel ${EXIT_RUNNING}
            Quit
        ${EndIf}
    ${Loop}
!macroend

; By name: what else lies in the folder is not ours.
!macro DeleteProgram folder
    Delete "${folder}\nullwright.exe"
    Delete "${folder}\nullwright-cli.exe"
    Delete "${folder}\nwaux6.dll"
    Delete "${folder}\nullwright.dat"
    Delete "${folder}\manual.html"
    Delete "${folder}\LICENSE.txt"
    Delete "${folder}\third-party.txt"
    Delete "${folder}\uninstall.exe"
    RMDir "${folder}"
!macroend

!macro RequireRights un
    Function ${un}HasRights ; pushes 1 or 0
        UserInfo::GetAccountType
        Pop $0
        ${If} $0 == "Admin"
            Push 1
        ${Else}
            Push 0
        ${EndIf}
    FunctionEnd

    ; Registry and shell folders of one user or of all.
    Function ${un}EnterMode
        SetRegView 64
        ${If} $AllUsers = 1
            SetShellVarContext all
        ${Else}
            SetShellVarContext current
        ${EndIf}
    FunctionEnd

    ; Takes away links, entries of Explorer, file type and PATH entry: all of them are made anew
    ; where they are wanted.
    Function ${un}RemoveParts
        Delete "$SMPROGRAMS\Nullwright.lnk"
        Delete "$DESKTOP\Nullwright.lnk"
        ; There is no such folder for all users.
        SetShellVarContext current
        Delete "$SENDTO\Nullwright.lnk"
        Call ${un}EnterMode

        DeleteRegKey SHCTX "${CLASSES}\*\shell\Nullwright"
        DeleteRegKey SHCTX "${CLASSES}\Directory\shell\Nullwright"
        DeleteRegKey SHCTX "${CLASSES}\${PROGID}"
        DeleteRegValue SHCTX "${CLASSES}\.nws\OpenWithProgids" "${PROGID}"
        ReadRegStr $0 SHCTX "${CLASSES}\.nws" ""
        ${If} $0 == "${PROGID}"
            ReadRegStr $0 SHCTX "${APPS_KEY}" "TypeBefore"
            ${If} $0 == ""
                DeleteRegValue SHCTX "${CLASSES}\.nws" ""
            ${Else}
                WriteRegStr SHCTX "${CLASSES}\.nws" "" $0
            ${EndIf}
        ${EndIf}
        !insertmacro DropEmptyKey "${CLASSES}\.nws\OpenWithProgids"
        !insertmacro DropEmptyKey "${CLASSES}\.nws"
        !insertmacro DropEmptyKey "${CLASSES}\*\shell"
        !insertmacro DropEmptyKey "${CLASSES}\*"
        !insertmacro DropEmptyKey "${CLASSES}\Directory\shell"
        !insertmacro DropEmptyKey "${CLASSES}\Directory"
        StrCpy $R0 $INSTDIR
        Call ${un}RemoveFromPath
    FunctionEnd

    Function ${un}TellExplorer
        System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)' ; SHCNE_ASSOCCHANGED
    FunctionEnd
!macroend
!macro DropEmptyKey key
    DeleteRegKey /ifnosubkeys /ifnovalues SHCTX "${key}"
!macroend
!insertmacro RequireRights ""
!insertmacro RequireRights "un."

; Takes away what the installation that is replaced has in another folder: its PATH entry and its
; files, otherwise consoles would go on with the old program. Two names may lead to the same folder
; (a short name, a link): a file that is made in the new one tells.
Function RemoveReplaced
    ${If} $Replaced == ""
    ${OrIf} $Replaced == $INSTDIR
        Return
    ${EndIf}
    StrCpy $R0 $Replaced
    Call RemoveFromPath
    ClearErrors
    GetTempFileName $0 $INSTDIR
    ${If} ${Errors}
        Return
    ${EndIf}
    ${GetFileName} $0 $1
    ${IfNot} ${FileExists} "$Replaced\$1"
        !insertmacro DeleteProgram "$Replaced"
    ${EndIf}
    Delete $0
FunctionEnd

; ---- Sections ------------------------------------------------------------------------------------

Section "Nullwright" SecProgram
    SectionIn RO
    ReadRegStr $Replaced SHCTX "${APPS_KEY}" "InstallLocation"
    !insertmacro RefuseWhileRunning "$INSTDIR\nullwright.exe"
    !insertmacro RefuseWhileRunning "$INSTDIR\nullwright-cli.exe"
    ${If} $Replaced != ""
        !insertmacro RefuseWhileRunning "$Replaced\nullwright.exe"
        !insertmacro RefuseWhileRunning "$Replaced\nullwright-cli.exe"
    ${EndIf}
    SetOutPath "$INSTDIR"
    File "${STAGE}/*"
    WriteUninstaller "$INSTDIR\uninstall.exe"
    Call RemoveParts
    Call RemoveReplaced

    WriteRegStr SHCTX "${APPS_KEY}" "DisplayName" "Nullwright"
    WriteRegStr SHCTX "${APPS_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr SHCTX "${APPS_KEY}" "Publisher" "${PUBLISHER}"
    WriteRegStr SHCTX "${APPS_KEY}" "DisplayIcon" "$INSTDIR\nullwright.exe,0"
    WriteRegStr SHCTX "${APPS_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr SHCTX "${APPS_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr SHCTX "${APPS_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD SHCTX "${APPS_KEY}" "EstimatedSize" ${SIZE_KB}
    WriteRegDWORD SHCTX "${APPS_KEY}" "NoModify" 1
    WriteRegDWORD SHCTX "${APPS_KEY}" "NoRepair" 1
    StrCpy $Parts ""
SectionEnd

Section "Start menu" SecStartMenu
    CreateShortcut "$SMPROGRAMS\Nullwright.lnk" "$INSTDIR\nullwright.exe" "" "" "" "" "" \
        "Destroys the data of files and drives beyond recovery"
    StrCpy $Parts "$Parts,StartMenu"
SectionEnd

Section /o "Desktop icon" SecDesktop
    CreateShortcut "$DESKTOP\Nullwright.lnk" "$INSTDIR\nullwright.exe" "" "" "" "" "" \
        "Destroys the data of files and drives beyond recovery"
    StrCpy $Parts "$Parts,Desktop"
SectionEnd

Section "Operation files (.nws)" SecOperations
    ReadRegStr $0 SHCTX "${CLASSES}\.nws" ""
    ${If} $0 != ""
        WriteRegStr SHCTX "${APPS_KEY}" "TypeBefore" $0
    ${EndIf}
    WriteRegStr SHCTX "${CLASSES}\.nws" "" "${PROGID}"
    WriteRegNone SHCTX "${CLASSES}\.nws\OpenWithProgids" "${PROGID}"
    WriteRegStr SHCTX "${CLASSES}\${PROGID}" "" "Nullwright operation file"
    WriteRegStr SHCTX "${CLASSES}\${PROGID}\DefaultIcon" "" "$INSTDIR\nullwright.exe,-2"
    WriteRegStr SHCTX "${CLASSES}\${PROGID}\shell\open\command" "" '"$INSTDIR\nullwright.exe" "%1"'
    StrCpy $Parts "$Parts,Operations"
SectionEnd

; The verb opens the program with the item chosen. For several items Explorer would start it once
; for each: these go through "Send to", which names them all in one command line.
!macro WriteVerb class
    WriteRegStr SHCTX "${CLASSES}\${class}\shell\Nullwright" "" "Purge with Nullwright ..."
    WriteRegStr SHCTX "${CLASSES}\${class}\shell\Nullwright" "Icon" "$INSTDIR\nullwright.exe,0"
    WriteRegStr SHCTX "${CLASSES}\${class}\shell\Nullwright" "MultiSelectModel" "Single"
    WriteRegStr SHCTX "${CLASSES}\${class}\shell\Nullwright\command" "" '"$INSTDIR\nullwright.exe" "%1"'
!macroend
Section "Explorer menu of files and folders" SecExplorer
    !insertmacro WriteVerb "*"
    !insertmacro WriteVerb "Directory"
    StrCpy $Parts "$Parts,Explorer"
SectionEnd

Section '"Send to" menu' SecSendTo
    SetShellVarContext current
    CreateShortcut "$SENDTO\Nullwright.lnk" "$INSTDIR\nullwright.exe" "" "" "" "" "" \
        "Opens Nullwright with the items chosen"
    Call EnterMode
    StrCpy $Parts "$Parts,SendTo"
SectionEnd

!ifdef CLI
Section "nullwright-cli in PATH" SecPath
    Call AddToPath
    StrCpy $Parts "$Parts,Path"
SectionEnd
!endif

Section -Finish
    WriteRegStr SHCTX "${APPS_KEY}" "Parts" "$Parts,"
    Call TellExplorer
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
    !insertmacro MUI_DESCRIPTION_TEXT ${SecProgram} "The program, its auxiliary library, its texts and its manual."
    !insertmacro MUI_DESCRIPTION_TEXT ${SecStartMenu} "An entry in the start menu."
    !insertmacro MUI_DESCRIPTION_TEXT ${SecDesktop} "An icon on the desktop."
    !insertmacro MUI_DESCRIPTION_TEXT ${SecOperations} "Operation files open in Nullwright. Opening one purges nothing."
    !insertmacro MUI_DESCRIPTION_TEXT ${SecExplorer} "Opens Nullwright with the file or folder chosen. It purges nothing by itself."
    !insertmacro MUI_DESCRIPTION_TEXT ${SecSendTo} "Opens Nullwright with the items chosen. It purges nothing by itself."
!ifdef CLI
    !insertmacro MUI_DESCRIPTION_TEXT ${SecPath} "nullwright-cli can be started from every console."
!endif
!insertmacro MUI_FUNCTION_DESCRIPTION_END

; ---- Beginning -----------------------------------------------------------------------------------

!macro ChoosePart name section
    Push $0
    Push ",${name},"
    Call IsPart
    Pop $0
    ${If} $0 = 1
        !insertmacro SelectSection ${section}
    ${Else}
        !insertmacro UnselectSection ${section}
    ${EndIf}
    Pop $0
!macroend

; Whether $Parts holds the text on the stack: 1 or 0.
Function IsPart
    Exch $0
    Push $1
    System::Call 'shlwapi::StrStrIW(w "$Parts", w r0) p .r1'
    StrCpy $0 1
    ${If} $1 P= 0
        StrCpy $0 0
    ${EndIf}
    Pop $1
    Exch $0
FunctionEnd

; Folder and parts: those given, those of the installation that is replaced, or the usual ones.
Function ApplyMode
    SetShellVarContext current
    StrCpy $0 "$LOCALAPPDATA\Programs\Nullwright"
    Call EnterMode
    ${If} $AllUsers = 1
        StrCpy $0 "$PROGRAMFILES64\Nullwright"
    ${EndIf}
    ReadRegStr $1 SHCTX "${APPS_KEY}" "InstallLocation"
    StrCpy $INSTDIR $0
    ${If} $FolderGiven != ""
        StrCpy $INSTDIR $FolderGiven
    ${ElseIf} $1 != ""
        StrCpy $INSTDIR $1
    ${EndIf}
    ReadRegStr $Parts SHCTX "${APPS_KEY}" "Parts"
    ${GetParameters} $2
    ClearErrors
    ${GetOptions} $2 "/Parts=" $3
    ${IfNot} ${Errors}
        StrCpy $Parts ",$3,"
    ${EndIf}
    ${If} $Parts != ""
        !insertmacro ChoosePart StartMenu ${SecStartMenu}
        !insertmacro ChoosePart Desktop ${SecDesktop}
        !insertmacro ChoosePart Operations ${SecOperations}
        !insertmacro ChoosePart Explorer ${SecExplorer}
        !insertmacro ChoosePart SendTo ${SecSendTo}
!ifdef CLI
        !insertmacro ChoosePart Path ${SecPath}
!endif
    ${EndIf}
FunctionEnd

Function .onInit
    SetRegView 64
    ${IfNot} ${AtLeastBuild} ${OLDEST_BUILD}
        MessageBox MB_OK|MB_ICONSTOP "Nullwright needs Windows 10, version 1903, or later." /SD IDOK
        SetErrorLevel ${EXIT_OLD_WINDOWS}
        Quit
    ${EndIf}
    ${If} $INSTDIR != "${NO_FOLDER}"
        StrCpy $FolderGiven $INSTDIR
    ${EndIf}
    StrCpy $AllUsers 0
    StrCpy $ModeGiven 1
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/AllUsers" $1
    ${IfNot} ${Errors}
        StrCpy $AllUsers 1
    ${Else}
        ClearErrors
        ${GetOptions} $0 "/CurrentUser" $1
        ${If} ${Errors}
            StrCpy $ModeGiven 0
            ReadRegStr $1 HKLM "${APPS_KEY}" "InstallLocation"
            ${If} $1 != ""
                StrCpy $AllUsers 1
            ${EndIf}
        ${EndIf}
    ${EndIf}
    Call HasRights
    Pop $0
    ${If} $AllUsers = 1
    ${AndIf} $0 = 0
    ${AndIf} ${Silent}
        SetErrorLevel ${EXIT_RIGHTS}
        Quit
    ${EndIf}
    Call ApplyMode
FunctionEnd

Function ShowModePage
    Call HasRights
    Pop $0
    ${If} $ModeGiven = 1
        ${If} $AllUsers = 0
            Abort
        ${ElseIf} $0 = 1
            Abort
        ${EndIf}
    ${EndIf}
    !insertmacro MUI_HEADER_TEXT "Install Nullwright ${VERSION}" "For whom is it to be installed?"
    nsDialogs::Create 1018
    Pop $0
    ${NSD_CreateRadioButton} 0 10u 100% 12u "&Only for me"
    Pop $ForOne
    ${NSD_CreateRadioButton} 0 28u 100% 12u "For &all users of this computer (asks for an administrator)"
    Pop $ForAll
    ${If} $AllUsers = 1
        ${NSD_Check} $ForAll
        ${NSD_SetFocus} $ForAll
    ${Else}
        ${NSD_Check} $ForOne
        ${NSD_SetFocus} $ForOne
    ${EndIf}
    nsDialogs::Show
FunctionEnd

Function LeaveModePage
    ${NSD_GetState} $ForAll $AllUsers
    ${If} $AllUsers <> ${BST_CHECKED}
        StrCpy $AllUsers 0
    ${EndIf}
    Call HasRights
    Pop $0
    ${If} $AllUsers = 1
    ${AndIf} $0 = 0
        ClearErrors
        ExecShell "runas" "$EXEPATH" "/AllUsers"
        ${IfNot} ${Errors}
            Quit
        ${EndIf}
        MessageBox MB_OK|MB_ICONEXCLAMATION "Without an administrator it can only be installed for you."
        Abort
    ${EndIf}
    Call ApplyMode
FunctionEnd

; Never with the rights of the set-up program: Explorer starts it with the user's.
Function StartProgram
    ${If} $AllUsers = 1
        Exec '"$WINDIR\explorer.exe" "$INSTDIR\nullwright.exe"'
    ${Else}
        Exec '"$INSTDIR\nullwright.exe"'
    ${EndIf}
FunctionEnd

; ---- Removal -------------------------------------------------------------------------------------

Function un.onInit
    SetRegView 64
    StrCpy $AllUsers 0
    ReadRegStr $0 HKLM "${APPS_KEY}" "InstallLocation"
    ${If} $0 == $INSTDIR
        StrCpy $AllUsers 1
        Call un.HasRights
        Pop $0
        ${If} $0 = 0
            ${If} ${Silent}
                SetErrorLevel ${EXIT_RIGHTS}
            ${Else}
                ExecShell "runas" "$INSTDIR\uninstall.exe"
            ${EndIf}
            Quit
        ${EndIf}
    ${EndIf}
    Call un.EnterMode
FunctionEnd

; The settings are the user's own: they stay unless he says otherwise (silent: /RemoveSettings).
Function un.RemoveSettings
    SetShellVarContext current
    ${If} ${FileExists} "$APPDATA\Nullwright\nullwright.*"
        ${GetParameters} $0
        ClearErrors
        ${GetOptions} $0 "/RemoveSettings" $1
        ${If} ${Errors}
            ${IfNot} ${Cmd} `MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Delete your saved settings too?$\r$\nOperation files that you have saved elsewhere stay in any case." /SD IDNO IDYES`
                Call un.EnterMode
                Return
            ${EndIf}
        ${EndIf}
        Delete "$APPDATA\Nullwright\nullwright.*"
        RMDir "$APPDATA\Nullwright"
    ${EndIf}
    Call un.EnterMode
FunctionEnd

Section Uninstall
    !insertmacro RefuseWhileRunning "$INSTDIR\nullwright.exe"
    !insertmacro RefuseWhileRunning "$INSTDIR\nullwright-cli.exe"
    Call un.RemoveParts
    Call un.RemoveSettings
    !insertmacro DeleteProgram "$INSTDIR"
    DeleteRegKey SHCTX "${APPS_KEY}"
    ${If} $AllUsers = 0 ; where many a user has nothing else
        RMDir "$LOCALAPPDATA\Programs"
        !insertmacro DropEmptyKey "Software\Microsoft\Windows\CurrentVersion\Uninstall"
    ${EndIf}
    Call un.TellExplorer
SectionEnd
