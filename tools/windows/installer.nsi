; The installer for Windows, for one user, without an administrator. tools/windows/package starts it, with the release, the
; folder of the files, and their list in groups.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true
AllowSkipFiles off

!include LogicLib.nsh
!include MUI2.nsh
!include "${LIST}"

!define TITLE "Equipment Record Editor"
!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\EquipmentRecordEditor"

Name "${TITLE}"
OutFile "${SETUP}"
BrandingText "${TITLE} ${VERSION}"
InstallDir "$LOCALAPPDATA\Programs\EquipmentRecordEditor"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${TITLE}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "${TITLE} Setup"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "The Equipment Record Editor authors"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\qt484-host.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; What is done with each file of a group.
!macro put FOLDER FILE
  SetOutPath "$INSTDIR\${FOLDER}"
  File "${FILES}\${FOLDER}\${FILE}"
!macroend

!macro take FOLDER FILE
  Delete "$INSTDIR\${FOLDER}\${FILE}"
  RMDir "$INSTDIR\${FOLDER}"
!macroend

; $0 becomes "changed" where the file is there and not as it was installed.
!macro compare FOLDER FILE
  ${If} ${FileExists} "$INSTDIR\${FOLDER}\${FILE}"
    GetFileTime "$INSTDIR\${FOLDER}\${FILE}" $1 $2
    ${If} $1 != "${TIME_HIGH}"
    ${OrIf} $2 != "${TIME_LOW}"
      StrCpy $0 "changed"
    ${EndIf}
  ${EndIf}
!macroend

; Files that belong together and that users change: they come where there are none, and go where all are unchanged.
!macro putWhereNone GROUP FIRST
  ${IfNot} ${FileExists} "$INSTDIR\${FIRST}"
    !insertmacro each_${GROUP} put
  ${EndIf}
!macroend

!macro takeUnchanged GROUP
  StrCpy $0 ""
  !insertmacro each_${GROUP} compare
  ${If} $0 == ""
    !insertmacro each_${GROUP} take
  ${EndIf}
!macroend

; A program that runs keeps its files, and half an installation would stay.
!macro refuseWhileRunning PROGRAM
  ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
    ClearErrors
    FileOpen $0 "$INSTDIR\${PROGRAM}" a
    ${If} ${Errors}
      MessageBox MB_ICONSTOP|MB_OK "${PROGRAM} is running. Please close it first." /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

; Another program's folder is no place for ours, whose uninstaller would take its libraries.
Function refuseStrangeFolder
  ${If} ${FileExists} "$INSTDIR\Qt6Core.dll"
  ${AndIfNot} ${FileExists} "$INSTDIR\uninstall.exe"
    MessageBox MB_ICONSTOP|MB_OK "Another program is in $INSTDIR. Please choose a folder of its own." /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
FunctionEnd

Function takeEarlierRelease
  ${If} ${FileExists} "$INSTDIR\uninstall.exe"
    ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
  ${EndIf}
FunctionEnd

Section
  Call refuseStrangeFolder
  !insertmacro refuseWhileRunning "qt484-host.exe"
  !insertmacro refuseWhileRunning "qt484-analyzer.exe"
  Call takeEarlierRelease
  !insertmacro each_program put
  !insertmacro putWhereNone list "DATA"
  !insertmacro putWhereNone sample "sample"
  !insertmacro putWhereNone settings "EquipmentRecord.ini"

  SetOutPath "$INSTDIR"  ; the shortcut starts there
  CreateShortcut "$SMPROGRAMS\${TITLE}.lnk" "$INSTDIR\qt484-host.exe" "" "$INSTDIR\EquipmentRecordPlugin.dll" 0
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "${KEY}" "DisplayName" "${TITLE}"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\EquipmentRecordPlugin.dll,0"
  WriteRegStr HKCU "${KEY}" "Publisher" "The Equipment Record Editor authors"
  WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${KEY}" "EstimatedSize" ${KILOBYTES}
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
SectionEnd

Section "Uninstall"
  !insertmacro refuseWhileRunning "qt484-host.exe"
  !insertmacro refuseWhileRunning "qt484-analyzer.exe"
  SetOutPath "$TEMP"  ; no folder of ours is in use
  Delete "$INSTDIR\DATA\eq.lock"
  !insertmacro takeUnchanged list
  !insertmacro takeUnchanged sample
  !insertmacro takeUnchanged settings
  !insertmacro each_program take
  Delete "$INSTDIR\EquipmentRecord.log"
  Delete "$INSTDIR\EquipmentRecord.old.log"
  RMDir "$INSTDIR\sample"
  Delete "$SMPROGRAMS\${TITLE}.lnk"
  DeleteRegKey HKCU "${KEY}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
SectionEnd
