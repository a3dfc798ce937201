# The installer. scripts/package-windows hands over what stands in capitals with a dollar sign and
# makes FILES, the list of what is installed:
#   VERSION   1.0.2026
#   FILES     a script with the macros InstallFiles, RemoveFiles and RemoveFolders
#   KILOBYTES how much they take on the disk
#   ICON      the program's icon
#   OUTPUT    the installer
#
# It installs for the one who starts it and needs no administrator rights. Both the installer and
# the uninstaller know /S, which asks nothing and takes every default; /D=<folder>, the last one and
# without quotes, names another folder. The exit codes:
#   0  done
#   1  the person cancelled
#   2  a file could not be written or removed
#   3  the program is running
#   4  the Windows is older than 10

# As 64-bit as the program: a 32-bit Windows refuses to start the installer, and says why.
Target amd64-unicode
SetCompressor /SOLID lzma
SetCompressorDictSize 32
ManifestDPIAware true
ManifestSupportedOS Win10
RequestExecutionLevel user

!define NAME "Orvane Plumara"
!define PUBLISHER "Orvane"
!define PROGRAM "Plumara.exe"
!define UNINSTALLER "Desinstalar.exe"
!define BOARD_ICON "pizarra.ico"
!define BOARD_CLASS "OrvanePlumara.vtrz"
!define CLASSES "Software\Classes"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\OrvanePlumara"
# In the same place: whether the person wanted an icon on the desktop.
!define DESKTOP_CHOICE "DesktopIcon"
!define GUIDE "Guia-de-usuario.html"
!define START_MENU_ICON "$SMPROGRAMS\${NAME}.lnk"
!define START_MENU_GUIDE "$SMPROGRAMS\Guía de ${NAME}.lnk"
!define DESKTOP_ICON "$DESKTOP\${NAME}.lnk"
!define ERROR_SHARING_VIOLATION 32

Name "${NAME}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\${NAME}"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "${NAME} ${VERSION}"
AllowSkipFiles off

!include "MUI2.nsh"
!include "Integration.nsh"
!include "LogicLib.nsh"
!include "WinVer.nsh"
!include "${FILES}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_HEADERIMAGE
!define MUI_HEADERIMAGE_RIGHT
!define MUI_HEADERIMAGE_BITMAP "pictures\header.bmp"
!define MUI_HEADERIMAGE_BITMAP_STRETCH AspectFitHeight
!define MUI_WELCOMEFINISHPAGE_BITMAP "pictures\side.bmp"
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_ABORTWARNING

!define MUI_WELCOMEPAGE_TITLE "Instalar ${NAME}"
!define MUI_WELCOMEPAGE_TEXT "${NAME} es una pizarra para su escritorio: dibuje, anote, señale, \
agregue imágenes y presente su trabajo en pantalla completa.$\r$\n$\r$\nSe instala únicamente \
para su usuario; no necesita permisos de administrador.$\r$\n$\r$\nSi ya tiene ${NAME}, ciérrelo \
antes de continuar. Sus pizarras se conservan.$\r$\n$\r$\n$_CLICK"
!insertmacro MUI_PAGE_WELCOME
!define MUI_COMPONENTSPAGE_TEXT_TOP "Elija qué desea instalar. $_CLICK"
!insertmacro MUI_PAGE_COMPONENTS
!define MUI_DIRECTORYPAGE_TEXT_TOP "${NAME} se instalará en esta carpeta. Para elegir otra, \
presione Examinar. $_CLICK"
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "Carpeta de destino"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE "${NAME} está instalado"
!define MUI_FINISHPAGE_TEXT "Lo encontrará en el menú Inicio.$\r$\n$\r$\nPara quitarlo, vaya a \
Configuración > Aplicaciones. Sus pizarras se conservan también entonces."
!define MUI_FINISHPAGE_RUN "$INSTDIR\${PROGRAM}"
!define MUI_FINISHPAGE_RUN_TEXT "&Abrir ${NAME}"
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
!insertmacro MUI_PAGE_FINISH

!define MUI_UNCONFIRMPAGE_TEXT_TOP "${NAME} se quitará de esta computadora. Sus pizarras, en \
Documents\OrvanePlumara, se conservan. $_CLICK"
!define MUI_UNCONFIRMPAGE_TEXT_LOCATION "Carpeta:"
!insertmacro MUI_UNPAGE_CONFIRM
!define MUI_INSTFILESPAGE_FINISHHEADER_TEXT "Desinstalación finalizada"
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE "SpanishInternational"
# The language's own have no blank before the figure.
SpaceTexts "Espacio requerido: " "Espacio disponible: "

# 2058: Spanish (Mexico), as in the program
VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=2058 "CompanyName" "${PUBLISHER}"
VIAddVersionKey /LANG=2058 "FileDescription" "Instalador de ${NAME}"
VIAddVersionKey /LANG=2058 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=2058 "LegalCopyright" "${PUBLISHER}"
VIAddVersionKey /LANG=2058 "ProductName" "${NAME}"
VIAddVersionKey /LANG=2058 "ProductVersion" "${VERSION}"

# RequireClosed <folder>: goes on when no program in that folder runs. A running one keeps its file
# from being written.
!macro RequireClosed folder
    ${Do}
        System::Call 'kernel32::CreateFile(t "${folder}\${PROGRAM}", i 0x40000000, i 0, p 0, i 3, \
            i 0, p 0) p.r0 ?e'
        Pop $1
        ${If} $0 P<> -1
            System::Call 'kernel32::CloseHandle(p r0)'
        ${EndIf}
        ${IfThen} $1 <> ${ERROR_SHARING_VIOLATION} ${|} ${Break} ${|}
        ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
                "${NAME} está abierto. Guarde sus pizarras, ciérrelo y presione Reintentar." \
                /SD IDCANCEL IDCANCEL`
            SetErrorLevel 3
            Quit
        ${EndIf}
    ${Loop}
!macroend

# An older version knows best what it has installed, and where.
Function RemoveInstalledVersion
    ReadRegStr $2 HKCU "${UNINSTALL_KEY}" "InstallLocation"
    ${IfNot} ${FileExists} "$2\${UNINSTALLER}"
        Return
    ${EndIf}
    !insertmacro RequireClosed "$2"
    # With _? the uninstaller is not copied elsewhere and can be waited for; it stays itself.
    ExecWait '"$2\${UNINSTALLER}" /S _?=$2' $3
    ${If} $3 <> 0
        MessageBox MB_OK|MB_ICONSTOP "No se pudo quitar la versión anterior." /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
    Delete "$2\${UNINSTALLER}"
    RMDir "$2"
FunctionEnd

Section "${NAME}" SectionProgram
    SectionIn RO
    !insertmacro RequireClosed "$INSTDIR"
    Call RemoveInstalledVersion

    !insertmacro InstallFiles
    SetOutPath "$INSTDIR"
    File "/oname=${BOARD_ICON}" "pictures\board.ico"
    WriteUninstaller "$INSTDIR\${UNINSTALLER}"
    CreateShortcut "${START_MENU_ICON}" "$INSTDIR\${PROGRAM}"
    CreateShortcut "${START_MENU_GUIDE}" "$INSTDIR\${GUIDE}"

    WriteRegStr HKCU "${CLASSES}\${BOARD_CLASS}" "" "Pizarra de ${NAME}"
    WriteRegStr HKCU "${CLASSES}\${BOARD_CLASS}\DefaultIcon" "" "$INSTDIR\${BOARD_ICON}"
    WriteRegStr HKCU "${CLASSES}\${BOARD_CLASS}\shell\open\command" "" \
        '"$INSTDIR\${PROGRAM}" "%1"'
    # Another program's claim is left alone.
    ReadRegStr $0 HKCU "${CLASSES}\.vtrz" ""
    ${If} $0 == ""
        WriteRegStr HKCU "${CLASSES}\.vtrz" "" "${BOARD_CLASS}"
    ${EndIf}
    ${NotifyShell_AssocChanged}

    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${NAME}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\${PROGRAM}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${KILOBYTES}
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
SectionEnd

Section /o "Icono en el escritorio" SectionDesktop
    SetOutPath "$INSTDIR"
    CreateShortcut "${DESKTOP_ICON}" "$INSTDIR\${PROGRAM}"
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "${DESKTOP_CHOICE}" 1
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
    !insertmacro MUI_DESCRIPTION_TEXT ${SectionProgram} \
        "El programa y su guía en el menú Inicio, y las pizarras que se abren con doble clic."
    !insertmacro MUI_DESCRIPTION_TEXT ${SectionDesktop} \
        "Un acceso directo a ${NAME} en su escritorio."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
    ${IfNot} ${AtLeastWin10}
        MessageBox MB_OK|MB_ICONSTOP "${NAME} necesita Windows 10 o posterior de 64 bits." /SD IDOK
        SetErrorLevel 4
        Quit
    ${EndIf}
    # Who had the icon on the desktop keeps it.
    ReadRegDWORD $0 HKCU "${UNINSTALL_KEY}" "${DESKTOP_CHOICE}"
    ${IfThen} $0 = 1 ${|} !insertmacro SelectSection ${SectionDesktop} ${|}
FunctionEnd

Function un.onInit
    !insertmacro RequireClosed "$INSTDIR"
FunctionEnd

# Removes what was installed, name by name; whatever else lies in the folder, it keeps.
Section "Uninstall"
    SetOutPath "$TEMP"
    ClearErrors
    !insertmacro RemoveFiles
    Delete "$INSTDIR\${BOARD_ICON}"
    ${If} ${Errors}
        MessageBox MB_OK|MB_ICONSTOP "No se pudieron quitar todos los archivos de $INSTDIR." /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
    !insertmacro RemoveFolders
    Delete "$INSTDIR\${UNINSTALLER}"
    RMDir "$INSTDIR"
    Delete "${START_MENU_ICON}"
    Delete "${START_MENU_GUIDE}"
    ReadRegDWORD $0 HKCU "${UNINSTALL_KEY}" "${DESKTOP_CHOICE}"
    ${If} $0 = 1
        Delete "${DESKTOP_ICON}"
    ${EndIf}

    DeleteRegKey HKCU "${CLASSES}\${BOARD_CLASS}"
    ReadRegStr $0 HKCU "${CLASSES}\.vtrz" ""
    ${If} $0 == "${BOARD_CLASS}"
        DeleteRegValue HKCU "${CLASSES}\.vtrz" ""
        DeleteRegKey /ifempty HKCU "${CLASSES}\.vtrz"
    ${EndIf}
    ${NotifyShell_AssocChanged}
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
