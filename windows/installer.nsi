; The installer: for one user, without any rights of an administrator. Build it with windows/build, which defines
; VERSION, SOURCE (the folder that the zip is made of) and TARGET (the file to write).
;
; /S installs and removes without a question, /D=FOLDER chooses the folder. What the person wrote stays at every
; installation, and at a removal unless it is asked for, in the question or with /FILES.

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Corvel"

Target amd64-unicode
SetCompressor /SOLID lzma
Name "Corvel"
OutFile "${TARGET}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Corvel"
InstallDirRegKey HKCU "${UNINSTALL}" "InstallLocation"
ShowInstDetails nevershow
ShowUninstDetails nevershow

!include "FileFunc.nsh"
!include "LogicLib.nsh"
!include "MUI2.nsh"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\corvel.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Corvel"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Installs Corvel ${VERSION}"
VIAddVersionKey "LegalCopyright" ""

; A program that runs cannot be replaced or removed.
!macro EndUnlessClosed
  ${Do}
    ClearErrors
    ${IfNot} ${FileExists} "$INSTDIR\corvel.exe"
      ${ExitDo}
    ${EndIf}
    FileOpen $0 "$INSTDIR\corvel.exe" a
    ${IfNot} ${Errors}
      FileClose $0
      ${ExitDo}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Corvel is running. Close it and try again." /SD IDCANCEL IDRETRY +2
    Abort
  ${Loop}
!macroend

Section
  !insertmacro EndUnlessClosed
  SetOutPath "$INSTDIR"
  File "${SOURCE}/corvel.exe"
  File "${SOURCE}/corvel-demo-server.exe"
  File "${SOURCE}/README.txt"
  SetOverwrite off
  File "${SOURCE}/settings.ini"
  SetOverwrite on
  File /r "${SOURCE}/docs"
  File /r "${SOURCE}/licences"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Corvel.lnk" "$INSTDIR\corvel.exe"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Corvel"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\corvel.exe"
  WriteRegStr HKCU "${UNINSTALL}" "Publisher" "Voskar Drennix"
  WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
SectionEnd

Section "Uninstall"
  !insertmacro EndUnlessClosed
  Delete "$SMPROGRAMS\Corvel.lnk"
  Delete "$INSTDIR\corvel.exe"
  Delete "$INSTDIR\corvel-demo-server.exe"
  Delete "$INSTDIR\README.txt"
  Delete "$INSTDIR\corvel.lock"
  RMDir /r "$INSTDIR\docs"
  RMDir /r "$INSTDIR\licences"
  DeleteRegKey HKCU "${UNINSTALL}"

  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/FILES" $1
  ${If} ${Errors}
    MessageBox MB_YESNO|MB_DEFBUTTON2|MB_ICONQUESTION "Remove your sites and settings too?$\r$\n$\r$\nThe files sites.ini and settings.ini in $INSTDIR, and the layout of the window." /SD IDNO IDNO keep
  ${EndIf}
  Delete "$INSTDIR\sites.ini"
  Delete "$INSTDIR\sites.ini.*"
  Delete "$INSTDIR\settings.ini"
  DeleteRegKey HKCU "Software\Voskar Drennix\Corvel2"
  DeleteRegKey /ifempty HKCU "Software\Voskar Drennix"
keep:
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR" ; where nothing is left in it
SectionEnd
