; The setup program. setup/package.py gives COMPANY, PRODUCT, VERSION, KILOBYTES, STAGE, OUT, and in MADE/contents.nsh
; the lists of files.
;   /CurrentUser, /AllUsers   for whom; else it asks, and in silence takes the user
;   /S, /D=folder             the system's own: in silence, where to
; Uninstalling: /AJUSTES takes the user's settings too, /ACTUALIZAR leaves all that was not installed for a newer version.
; Exit codes: 0 good, 1 and 2 cancelled, 3 a file, 4 registration, 5 the older version, 740 rights are missing.
Unicode true
!include "MUI2.nsh"
!include "FileFunc.nsh"
!include "LogicLib.nsh"
!include "Sections.nsh"
!include "WordFunc.nsh"
!include "x64.nsh"

!define ARP "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define RUN_ONCE "Software\Microsoft\Windows\CurrentVersion\RunOnce"
!define MENU "$SMPROGRAMS\${PRODUCT}"
!define ASIDE "$INSTDIR.viejo" ; beside the folder, and so on its drive: for files that a program has loaded

!define REASON "$TEMP\${PRODUCT}-instalar.txt"

Name "${PRODUCT}"
Caption "Instalación de ${PRODUCT} ${VERSION}"
BrandingText "${PRODUCT} ${VERSION}"
OutFile "${OUT}"
RequestExecutionLevel user
ManifestDPIAware true
SetCompressor /SOLID lzma
SetDateSave off
AllowSkipFiles off
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${VERSION}.0"
!macro Said name text
  VIAddVersionKey /LANG=${LANG_SPANISH} "${name}" "${text}"
!macroend

Var Everybody ; 1: not only the user
Var Told      ; 1: the command line said so
Var Given     ; the folder that /D named

!define MUI_ICON "assets/Tamvelo.ico"
!define MUI_UNICON "assets/Tamvelo.ico"
!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_WELCOME
Page custom AskForWhom TakeForWhom
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\TamveloDemo.exe"
!define MUI_FINISHPAGE_RUN_TEXT "Abrir el programa de demostración"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_COMPONENTS
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Spanish"

!insertmacro Said "CompanyName" "${COMPANY}"
!insertmacro Said "ProductName" "${PRODUCT}"
!insertmacro Said "ProductVersion" "${VERSION}"
!insertmacro Said "FileVersion" "${VERSION}"
!insertmacro Said "FileDescription" "Instalación de ${PRODUCT}"
!insertmacro Said "LegalCopyright" "${COMPANY}"

; A reason for what fails: for who sits there, or in silence in a file.
!macro Tell text
  ${If} ${Silent}
    FileOpen $9 "${REASON}" w
    FileWriteUTF16LE /BOM $9 "${text}$\r$\n"
    FileClose $9
  ${Else}
    MessageBox MB_ICONSTOP "${text}"
  ${EndIf}
!macroend

!macro Fail code text
  SetErrorLevel ${code}
  !insertmacro Tell "${text}"
  Quit
!macroend

!macro Free file
  Push "${file}"
  !ifdef __UNINSTALL__
    Call un.Free
  !else
    Call Free
  !endif
!macroend

!macro RegSvr program how file
  ExecWait '"${program}" /s ${how} "$INSTDIR\${file}"' $0
  ${If} ${Errors}
    StrCpy $0 -1
  ${EndIf}
!macroend

; Both libraries, by the program of the system that is of the same kind. $0 is 0, or what it ended with.
!macro RegisterBoth un
  StrCpy $1 "${un}"
  ${If} $Everybody != 1
    StrCpy $1 "${un} /n /i:user"
  ${EndIf}
  ClearErrors
  !insertmacro RegSvr "$SYSDIR\regsvr32.exe" $1 "Tamvelo.dll"
  ${If} $0 == 0
  ${AndIf} ${RunningX64}
  ${AndIf} ${IsNativeAMD64}
    !insertmacro RegSvr "$WINDIR\Sysnative\regsvr32.exe" $1 "Tamvelo64.dll"
  ${EndIf}
!macroend

; What setup and uninstaller have in common, each in functions of its own.
!macro Common un
; Takes a file away, also one that a program has loaded: that one is moved aside, and goes with the next start of
; Windows or the next run of setup.
Function ${un}Free
  Exch $R0
  ${If} ${FileExists} $R0
    ClearErrors
    Delete $R0
    ${If} ${Errors}
      CreateDirectory "${ASIDE}"
      GetTempFileName $R1 "${ASIDE}"
      Delete $R1
      ClearErrors
      Rename $R0 $R1
      ${If} ${Errors}
        !insertmacro Fail 3 "No se puede reemplazar «$R0». Cierre los programas que lo usan y vuelva a intentarlo."
      ${EndIf}
      WriteRegStr SHCTX "${RUN_ONCE}" "${PRODUCT}" '"$SYSDIR\cmd.exe" /c rmdir /s /q "${ASIDE}"'
    ${EndIf}
  ${EndIf}
  Pop $R0
FunctionEnd

; What earlier runs moved aside and nobody holds any more.
Function ${un}CleanAside
  ${If} ${FileExists} "${ASIDE}\*.*"
    RMDir /r "${ASIDE}"
    ${IfNot} ${FileExists} "${ASIDE}\*.*"
      DeleteRegValue SHCTX "${RUN_ONCE}" "${PRODUCT}"
    ${EndIf}
  ${EndIf}
FunctionEnd

Function ${un}UseScope
  ${If} $Everybody == 1
    SetShellVarContext all
    ${If} ${RunningX64}
      SetRegView 64
    ${EndIf}
  ${Else}
    SetShellVarContext current
  ${EndIf}
FunctionEnd

; Whether this program may write for everybody: $0 is 1.
Function ${un}MayAll
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    StrCpy $0 1
  ${EndIf}
FunctionEnd
!macroend
!insertmacro Common ""
!insertmacro Common "un."
!include "${MADE}/contents.nsh"

; Installing

Function .onInit
  StrCpy $Given $INSTDIR
  Delete "${REASON}" ; an earlier one's
  ${GetParameters} $1
  ; "/D=folder" in quotes, as some shells pass it on, is not known to NSIS.
  ClearErrors
  ${WordFind2X} $1 '"/D=' '"' "E+1" $2
  ${IfNot} ${Errors}
    StrCpy $Given $2
  ${EndIf}
  ClearErrors
  ${GetOptions} $1 "/CurrentUser" $2
  ${IfNot} ${Errors}
  ${OrIf} ${Silent}
    StrCpy $Told 1
  ${EndIf}
  ClearErrors
  ${GetOptions} $1 "/AllUsers" $2
  ${IfNot} ${Errors}
    StrCpy $Told 1
    StrCpy $Everybody 1
    Call MayAll
    ${If} $0 != 1
      !insertmacro Fail 740 "Para instalar ${PRODUCT} para todos los usuarios hacen falta permisos de administrador."
    ${EndIf}
  ${EndIf}
  Call ChooseFolder
FunctionEnd

; The folder that was named, else where it is already, else the usual one.
Function ChooseFolder
  Call UseScope
  ReadRegStr $INSTDIR SHCTX "${ARP}" "InstallLocation"
  ${If} $Given != ""
    StrCpy $INSTDIR $Given
  ${ElseIf} $INSTDIR != ""
    Nop
  ${ElseIf} $Everybody != 1
    StrCpy $INSTDIR "$LOCALAPPDATA\Programs\${PRODUCT}"
  ${ElseIf} ${RunningX64}
    StrCpy $INSTDIR "$PROGRAMFILES64\${PRODUCT}"
  ${Else}
    StrCpy $INSTDIR "$PROGRAMFILES32\${PRODUCT}"
  ${EndIf}
FunctionEnd

Var ForAll
Function AskForWhom
  ${If} $Told == 1
    Abort
  ${EndIf}
  !insertmacro MUI_HEADER_TEXT "Para quién" "Elija quién va a usar ${PRODUCT} en este equipo."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 20u 100% 12u "Solo para &mí (no hacen falta permisos)"
  Pop $0
  ${NSD_CreateRadioButton} 0 40u 100% 12u "Para &todos los usuarios (pide permisos de administrador)"
  Pop $ForAll
  ${If} $Everybody == 1
    StrCpy $0 $ForAll
  ${EndIf}
  ${NSD_Check} $0
  nsDialogs::Show
FunctionEnd

Function TakeForWhom
  ${NSD_GetState} $ForAll $Everybody
  Call MayAll
  ${If} $Everybody == 1
  ${AndIf} $0 != 1
    ClearErrors
    ExecShell "runas" "$EXEPATH" "/AllUsers"
    ${IfNot} ${Errors}
      Quit ; that one goes on
    ${EndIf}
    MessageBox MB_ICONEXCLAMATION "Windows no ha concedido los permisos."
    Abort
  ${EndIf}
  Call ChooseFolder
FunctionEnd

; A file did not come out.
Function .onInstFailed
  SetErrorLevel 3
  !insertmacro Tell "No se puede escribir en «$INSTDIR». ${PRODUCT} no está instalado del todo."
FunctionEnd

Section
  ; The version that is there knows best what it brought.
  ReadRegStr $1 SHCTX "${ARP}" "InstallLocation"
  ${If} $1 != ""
  ${AndIf} ${FileExists} "$1\Desinstalar.exe"
    ClearErrors
    ExecWait '"$1\Desinstalar.exe" /S /ACTUALIZAR _?=$1' $0
    ${If} ${Errors}
    ${OrIf} $0 != 0
      !insertmacro Fail 5 "No se puede quitar la versión anterior, que está en «$1» ($0)."
    ${EndIf}
    Delete "$1\Desinstalar.exe"
    RMDir "$1"
  ${EndIf}
  Call CleanAside

  !insertmacro PlaceFiles
  ClearErrors
  WriteUninstaller "$INSTDIR\Desinstalar.exe"
  ${If} ${Errors}
    !insertmacro Fail 3 "No se puede escribir en «$INSTDIR»."
  ${EndIf}
  WriteRegStr SHCTX "${ARP}" "DisplayName" "${PRODUCT}"
  WriteRegStr SHCTX "${ARP}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${ARP}" "Publisher" "${COMPANY}"
  WriteRegStr SHCTX "${ARP}" "DisplayIcon" "$INSTDIR\Desinstalar.exe"
  WriteRegStr SHCTX "${ARP}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${ARP}" "UninstallString" '"$INSTDIR\Desinstalar.exe"'
  WriteRegStr SHCTX "${ARP}" "QuietUninstallString" '"$INSTDIR\Desinstalar.exe" /S'
  WriteRegDWORD SHCTX "${ARP}" "EstimatedSize" ${KILOBYTES}
  WriteRegDWORD SHCTX "${ARP}" "NoModify" 1
  WriteRegDWORD SHCTX "${ARP}" "NoRepair" 1
  SetOutPath "$INSTDIR" ; where the shortcuts start
  CreateDirectory "${MENU}"
  CreateShortcut "${MENU}\Demostración de ${PRODUCT}.lnk" "$INSTDIR\TamveloDemo.exe"
  CreateShortcut "${MENU}\Manual de ${PRODUCT}.lnk" "$INSTDIR\docs\manual\index.html"

  !insertmacro RegisterBoth ""
  ${If} $0 != 0
    !insertmacro Fail 4 "No se puede registrar la biblioteca: regsvr32 termina con $0."
  ${EndIf}
SectionEnd

; Uninstalling

Section /o "un.Ajustes del usuario" Settings
  DeleteRegKey HKCU "Software\${COMPANY}"
  RMDir /r "$INSTDIR\AtbGrx"
SectionEnd

Section "un.${PRODUCT}" Program
  SectionIn RO
  !insertmacro RegisterBoth "/u"
  StrCpy $2 $0 ; what it can still do it does all the same
  Call un.CleanAside
  !insertmacro RemoveFiles
  Delete "${MENU}\Demostración de ${PRODUCT}.lnk"
  Delete "${MENU}\Manual de ${PRODUCT}.lnk"
  RMDir "${MENU}"
  DeleteRegKey SHCTX "${ARP}"
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/ACTUALIZAR" $3
  ${If} ${Errors}
    ; What the demonstration made of itself.
    Delete "$INSTDIR\TamveloDemo.sqlite"
    Delete "$INSTDIR\TamveloDiagnostico.txt"
    SetShellVarContext current
    Delete "$LOCALAPPDATA\${PRODUCT}\TamveloDemo.sqlite"
    RMDir "$LOCALAPPDATA\${PRODUCT}"
    RMDir /r "$TEMP\TamveloMuestra"
    Delete "$TEMP\TamveloDiagnostico.txt"
    Call un.UseScope
    Delete "$INSTDIR\Desinstalar.exe"
    SetOutPath "$TEMP" ; nobody in the folder that goes
    RMDir "$INSTDIR"
  ${EndIf}
  Call un.CleanAside
  ${If} $2 != 0
    !insertmacro Fail 4 "La biblioteca no se ha podido quitar del registro: regsvr32 termina con $2."
  ${EndIf}
SectionEnd

Function un.onInit
  ReadRegStr $0 HKCU "${ARP}" "InstallLocation"
  ${If} $0 != $INSTDIR
    StrCpy $Everybody 1
    Call un.MayAll
    ${If} $0 != 1
      ${IfNot} ${Silent}
        ClearErrors
        ExecShell "runas" "$INSTDIR\Desinstalar.exe"
        ${IfNot} ${Errors}
          Quit
        ${EndIf}
      ${EndIf}
      !insertmacro Fail 740 "Para quitar lo instalado para todos los usuarios hacen falta permisos de administrador."
    ${EndIf}
  ${EndIf}
  Call un.UseScope
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/AJUSTES" $2
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${Settings}
  ${EndIf}
FunctionEnd
