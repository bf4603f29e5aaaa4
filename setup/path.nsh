; The program's folder in PATH. A PATH may be longer than a text of a set-up script can be: it is
; changed in memory of its own and never passes through one.

!macro PathFunctions un
    ; Reads PATH of the user or of the machine: $0 key or 0, $1 type, $2 ";" + text + ";".
    Function ${un}OpenPath
        StrCpy $3 -2147483647 ; HKEY_CURRENT_USER
        StrCpy $4 "Environment"
        ${If} $AllUsers = 1
            StrCpy $3 -2147483646 ; HKEY_LOCAL_MACHINE
            StrCpy $4 "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
        ${EndIf}
        StrCpy $0 0
        StrCpy $1 2 ; REG_EXPAND_SZ
        System::Call 'advapi32::RegOpenKeyExW(p r3, w r4, i 0, i 0x2011B, *p .r5) i .r6'
        ${If} $6 <> 0
            Return
        ${EndIf}
        StrCpy $7 0
        System::Call 'advapi32::RegQueryValueExW(p r5, w "Path", p 0, *i .r8, p 0, *i .r7) i .r6'
        ${If} $6 = 0
            StrCpy $1 $8
        ${Else}
            StrCpy $7 0
        ${EndIf}
        ${If} $6 <> 0
        ${AndIf} $6 <> 2 ; ERROR_FILE_NOT_FOUND: there is none yet
            System::Call 'advapi32::RegCloseKey(p r5)'
            Return
        ${EndIf}
        ${If} $1 <> 1
        ${AndIf} $1 <> 2 ; no text: not ours to change
            System::Call 'advapi32::RegCloseKey(p r5)'
            Return
        ${EndIf}
        IntOp $8 $7 + 4096 ; room for what may be added
        System::Alloc $8
        Pop $2
        System::Call 'kernel32::lstrcpyW(p r2, w ";")'
        ${If} $7 > 0
            IntPtrOp $8 $2 + 2
            System::Call 'advapi32::RegQueryValueExW(p r5, w "Path", p 0, p 0, p r8, *i r7) i .r6'
            ${If} $6 <> 0
                System::Free $2
                System::Call 'advapi32::RegCloseKey(p r5)'
                Return
            ${EndIf}
        ${EndIf}
        System::Call 'kernel32::lstrcatW(p r2, w ";")'
        StrCpy $0 $5
    FunctionEnd

    ; Writes what OpenPath has read and closes it; the ";" at both ends go. $9 = 1: it has changed.
    Function ${un}ClosePath
        ${If} $9 = 1
            System::Call 'kernel32::lstrlenW(p r2) i .r3'
            ${If} $3 > 2
                IntPtrOp $4 $2 + 2
                IntOp $5 $3 - 1
                IntOp $6 $5 * 2
                IntPtrOp $7 $2 + $6
                System::Call 'kernel32::RtlZeroMemory(p r7, p 2)' ; the last ";"
                System::Call 'advapi32::RegSetValueExW(p r0, w "Path", i 0, i r1, p r4, i r6)'
            ${Else}
                System::Call 'advapi32::RegDeleteValueW(p r0, w "Path")'
            ${EndIf}
            System::Call 'user32::SendMessageTimeoutW(p 0xFFFF, i 0x1A, p 0, w "Environment", i 2, i 2000, *p .r3)'
        ${EndIf}
        System::Call 'advapi32::RegCloseKey(p r0)'
        System::Free $2
    FunctionEnd

    ; Takes away the folder in $R0.
    Function ${un}RemoveFromPath
        Call ${un}OpenPath
        ${If} $0 P= 0
            Return
        ${EndIf}
        StrCpy $9 0
        System::Call 'shlwapi::StrStrIW(p r2, w ";$R0;") p .r3'
        ${If} $3 P<> 0
            StrLen $4 ";$R0"
            IntOp $4 $4 * 2
            IntPtrOp $5 $3 + $4
            System::Call 'kernel32::lstrlenW(p r5) i .r6'
            IntOp $6 $6 + 1
            IntOp $6 $6 * 2
            System::Call 'kernel32::RtlMoveMemory(p r3, p r5, p r6)'
            StrCpy $9 1
        ${EndIf}
        Call ${un}ClosePath
    FunctionEnd
!macroend

!ifdef CLI
Function AddToPath
    Call OpenPath
    ${If} $0 P= 0
        Return
    ${EndIf}
    StrCpy $9 0
    System::Call 'shlwapi::StrStrIW(p r2, w ";$INSTDIR;") p .r3'
    ${If} $3 P= 0
        System::Call 'kernel32::lstrlenW(p r2) i .r3'
        ${If} $3 = 2 ; it was empty
            System::Call 'kernel32::lstrcpyW(p r2, w ";$INSTDIR;")'
        ${Else}
            System::Call 'kernel32::lstrcatW(p r2, w "$INSTDIR;")'
        ${EndIf}
        StrCpy $9 1
    ${EndIf}
    Call ClosePath
FunctionEnd
!endif
