// What the home window is made of, row by row: its widgets, texts, pictures, fonts and style sheets.
#pragma once

#include <QFont>
#include <QRect>

/// A widget and its rectangle in its parent.
struct WidgetRow
{
    const char *name;
    const char *className;
    const char *parent;
    QRect geometry;
};

constexpr WidgetRow widgetRows[] = {
    {"SideMenu", "QWidget", "centralwidget", {-2, -2, 232, 705}},
    {"AppLogoBanner", "QLabel", "SideMenu", {17, 20, 195, 29}},
    {"Separator", "QLabel", "SideMenu", {17, 60, 200, 10}},
    {"SubTitleIndex", "QLabel", "SideMenu", {22, 95, 50, 10}},
    {"NavMainBtn", "QPushButton", "SideMenu", {12, 115, 207, 27}},
    {"ClockTxt", "QLabel", "SideMenu", {15, 675, 200, 15}},
    {"SubTitleSettings", "QLabel", "SideMenu", {22, 160, 130, 10}},
    {"NavSettingsBtn", "QPushButton", "SideMenu", {12, 180, 207, 27}},
    {"NavHelpBtn", "QPushButton", "SideMenu", {12, 215, 207, 27}},
    {"MainMenu", "QWidget", "centralwidget", {230, 0, 970, 700}},
    {"SeparatorMenu", "QLabel", "MainMenu", {60, 260, 845, 10}},
    {"NewProject", "QToolButton", "MainMenu", {60, 60, 140, 170}},
    {"ImportProject", "QToolButton", "MainMenu", {230, 60, 140, 170}},
    {"SubTitleIndexFiles", "QLabel", "MainMenu", {60, 295, 350, 10}},
    {"listWidget", "QListWidget", "MainMenu", {60, 335, 845, 325}},
    {"SubTitleIndexMain", "QLabel", "MainMenu", {60, 25, 350, 10}},
    {"SettingsMenu", "QWidget", "centralwidget", {230, 0, 970, 700}},
    {"SubTitleIndexSettings", "QLabel", "SettingsMenu", {60, 25, 350, 10}},
    {"CheckUpdates", "QCheckBox", "SettingsMenu", {60, 65, 740, 20}},
    {"CompressFiles", "QCheckBox", "SettingsMenu", {60, 100, 740, 20}},
    {"BetterPerformance", "QCheckBox", "SettingsMenu", {60, 140, 740, 20}},
    {"BetterX2", "QCheckBox", "SettingsMenu", {60, 180, 810, 20}},
    {"OnlyViewData", "QCheckBox", "SettingsMenu", {60, 220, 740, 20}},
    {"SubTitleIndexSettings_2", "QLabel", "SettingsMenu", {60, 275, 350, 10}},
    {"widget", "QWidget", "SettingsMenu", {60, 305, 175, 30}},
    {"ClearCacheBtn", "QPushButton", "widget", {0, 0, 175, 30}},
    {"CleanedCacheW", "QWidget", "widget", {0, 0, 0, 30}},
    {"CleanedCacheS", "QPushButton", "widget", {0, 0, 0, 30}},
    {"RedoFolder", "QPushButton", "SettingsMenu", {60, 345, 175, 30}},
    {"DeleteAll", "QPushButton", "SettingsMenu", {60, 385, 175, 30}},
    {"AboutSubtitleSettings", "QLabel", "SettingsMenu", {60, 445, 220, 20}},
    {"BetaMessage", "QLabel", "SettingsMenu", {60, 470, 835, 155}},
    {"CodeNameProgram", "QLabel", "SettingsMenu", {60, 645, 611, 25}},
    {"VersionProgram", "QLabel", "SettingsMenu", {60, 670, 780, 20}},
    {"LogoEnterprise", "QLabel", "SettingsMenu", {760, 650, 160, 40}},
    {"HelpMenu", "QWidget", "centralwidget", {230, 0, 970, 700}},
    {"SubTitleIndexHelp", "QLabel", "HelpMenu", {60, 25, 350, 10}},
    {"HelpWidget", "QTabWidget", "HelpMenu", {60, 70, 850, 605}},
    {"UpdateAdvisor", "QWidget", "centralwidget", {0, 0, 1200, 700}},
    {"FrameUpdater", "QWidget", "UpdateAdvisor", {110, 95, 990, 490}},
    {"UpdateTitle", "QLabel", "FrameUpdater", {20, 20, 791, 25}},
    {"NewVersionDesc", "QLabel", "FrameUpdater", {20, 50, 730, 25}},
    {"UpdateDesc", "QLabel", "FrameUpdater", {20, 100, 941, 301}},
    {"SubTitleLabelTxt_13", "QLabel", "FrameUpdater", {214, 113, 40, 30}},
    {"InstallerLogo", "QLabel", "FrameUpdater", {920, 15, 55, 55}},
    {"UpdateIcon", "QLabel", "FrameUpdater", {20, 447, 15, 15}},
    {"NewVersionDesc_2", "QLabel", "FrameUpdater", {40, 441, 470, 25}},
    {"CancelUpdate", "QPushButton", "FrameUpdater", {520, 440, 220, 30}},
    {"StartUpdate", "QPushButton", "FrameUpdater", {750, 440, 220, 30}},
};

struct TextRow
{
    const char *name;
    const char *text;
};

constexpr TextRow textRows[] = {
    {"Separator", "<hr>"},
    {"SeparatorMenu", "<hr>"},
    {"SubTitleIndex", "Inicio"},
    {"NavMainBtn", "  Pizarras"},
    {"ClockTxt", "<html><head/><body><p>VER. 1.0.2026 LIVE</p></body></html>"},
    {"SubTitleSettings", "Preferencias"},
    {"NavSettingsBtn", "  Ajustes"},
    {"NavHelpBtn", "  Ayuda"},
    {"NewProject", "Nueva pizarra"},
    {"ImportProject", "Abrir pizarra"},
    {"SubTitleIndexFiles", "PIZARRAS RECIENTES"},
    {"SubTitleIndexMain", "ACCIONES"},
    {"SubTitleIndexSettings", "AJUSTES GENERALES"},
    {"CheckUpdates", "Comprobar actualizaciones automáticamente (Opción activada por defecto)"},
    {"CompressFiles", "Permitir la compresión de archivos de Plumara (.vtrz)"},
    {"BetterPerformance", "Mejorar la presición de la pizarra en pantalla completa"},
    {"BetterX2",
     "Mejorar la presición de la pizarra en pantallas táctiles (Tablets PC, Proyectores "
     "Interactivos, Windows Touch [Surface], entre otros)"},
    {"OnlyViewData", "Cifrar los datos guardados de Plumara (.vtrz)"},
    {"SubTitleIndexSettings_2", "AJUSTES AVANZADOS"},
    {"ClearCacheBtn", "   Eliminar datos caché"},
    {"CleanedCacheS", "   Datos limpiados"},
    {"RedoFolder", "   Recondtuir proxy"},
    {"DeleteAll", "   Reiniciar datos"},
    {"AboutSubtitleSettings", "ACERCA DE"},
    {"CodeNameProgram", "Orvane Plumara"},
    {"VersionProgram", "V1.0.2026 (XBQMWinRNTOSREL1.0.2026_RT11082025)"},
    {"SubTitleIndexHelp", "AYUDA Y CONSEJOS"},
    {"UpdateTitle", "Aviso de actualización disponible - V1.1.2026"},
    {"NewVersionDesc", "Novedades de la actualización:"},
    {"UpdateDesc",
     "1. Mejoras de rendimiento\n"
     "2. Implementación de Sagra AI\n"
     "3. Se han mejorado las funciones de Deshacer y Rehacer cambios (Ocurrido un error que los "
     "cambios no se hacian al instante o se limitaban)\n"
     "4. Se ha mejorado la presición de elementos en la pizarra\n"
     "5. Se ha optimizado la sensibilidad para equipos Touch\n"
     "6. Se ha mejorado el ajuste de tamaño de la pizarra en modo Presentación de Pantalla "
     "completa (Ocurrido un error, que la pizarra no abarcaba toda el área en Modo de Presentación "
     "en Pantalla completa y no se adaptaba a la resolución del monitor del usuario)."},
    {"NewVersionDesc_2", "Actualización requerida para un mejor funcionamiento"},
    {"CancelUpdate", "  CANCELAR"},
    {"StartUpdate", "  ACTUALIZAR"},
};

struct PictureRow
{
    const char *name;
    const char *path;
};

constexpr PictureRow iconRows[] = {
    {"NavMainBtn", ":/img/icoboard.png"},    {"NavSettingsBtn", ":/img/settings.png"},
    {"NavHelpBtn", ":/img/help.png"},        {"NewProject", ":/img/newproject.png"},
    {"ImportProject", ":/img/import.png"},   {"ClearCacheBtn", ":/img/clear.png"},
    {"CleanedCacheS", ":/img/checkedb.png"}, {"RedoFolder", ":/img/switch.png"},
    {"DeleteAll", ":/img/delete.png"},       {"CancelUpdate", ":/img/unchecked.png"},
    {"StartUpdate", ":/img/update.png"},
};

constexpr PictureRow pixmapRows[] = {
    {"AppLogoBanner", ":/img/plumbanner.png"},
    {"LogoEnterprise", ":/img/logobrandb.png"},
    {"SubTitleLabelTxt_13", ":/Imageres/AIicon.png"},
    {"InstallerLogo", ":/img/plumupdater.png"},
    {"UpdateIcon", ":/img/update.png"},
};

/// A font: its size in points and its weight.
struct FontRow
{
    const char *name;
    int pointSize;
    int weight;
};

constexpr FontRow fontRows[] = {
    {"SubTitleIndex", 9, 400},         {"ClockTxt", 9, 400},     {"SubTitleIndexFiles", 9, 600},
    {"AboutSubtitleSettings", 9, 600}, {"BetaMessage", 9, 400},  {"CodeNameProgram", 12, 400},
    {"VersionProgram", 9, 400},        {"UpdateTitle", 13, 400}, {"UpdateDesc", 10, 400},
};

namespace Sheet {

constexpr char sideMenu[] = "background-color: #F0F0F0;\n"
                            "border: 1px solid #C2C2C2;";
constexpr char banner[] = "background-color: transparent;\n"
                          "border: none;";
constexpr char sideLabel[] = "background-color: transparent;\n"
                             "color: black;\n"
                             "border: none;";
constexpr char pageRule[] = "background-color: transparent;\n"
                            "color: #ACACAC;\n"
                            "border: none;";
constexpr char sideTitle[] = "background-color: transparent;\n"
                             "color: #3e3e3e;\n"
                             "border: none;";
constexpr char sectionTitle[] = "background-color: transparent;\n"
                                "color: #3e3e3e;\n"
                                "font-weight: 600;";
constexpr char navigation[] = "QPushButton\n"
                              "{\n"
                              "    background-color: transparent;\n"
                              "    border: none;\n"
                              "\tcolor: black;\n"
                              "    text-align: left;\n"
                              "\tpadding-left: 17px;\n"
                              "}\n"
                              "QPushButton:hover\n"
                              "{\n"
                              "\tbackground-color: #D9D9D9;\n"
                              "\tborder-radius: 5px;\n"
                              "}\n"
                              "QPushButton:pressed,\n"
                              "QPushButton:checked\n"
                              "{\n"
                              "\tbackground-color: #C2C2C2;\n"
                              "\tcolor: black;\n"
                              "\tborder-radius: 5px;\n"
                              "}";
constexpr char page[] = "background-color: #F0F0F0;";
constexpr char action[] = "QToolButton {\n"
                          "    background-color: #F0F0F0;\n"
                          "    color: black;\n"
                          "    border: 1px solid #ACACAC;\n"
                          "    border-radius: 2px;\n"
                          "    padding-top: 35px;\n"
                          "    padding-bottom: 2px;\n"
                          "    padding-left: 5px;\n"
                          "    padding-right: 5px;\n"
                          "    qproperty-iconSize: 35px 35px;\n"
                          "\tfont-weight: 500;\n"
                          "    font-size: 12px;\n"
                          "}\n"
                          "QToolButton:hover {\n"
                          "    background-color: #D9D9D9;\n"
                          "}\n"
                          "QToolButton:pressed {\n"
                          "    background-color: #C2C2C2;\n"
                          "}\n";
constexpr char boards[] = "QListWidget\n"
                          "{\n"
                          "\tborder: 1px solid #ccc;\n"
                          "    border-radius: 4px;\n"
                          "    padding: 5px;\n"
                          "}\n"
                          "QListWidget::item\n"
                          "{\n"
                          "\tpadding: 5px;\n"
                          "    height: 60px;\n"
                          "}";
constexpr char checkBox[] = "QCheckBox\n"
                            "{\n"
                            "    spacing: 8px;\n"
                            "    color: #565656;\n"
                            "\tfont-weight: 500;\n"
                            "}\n"
                            "QCheckBox::indicator\n"
                            "{\n"
                            "\twidth: 16px;\n"
                            "    height: 16px;\n"
                            "    border: 2px solid transparent;\n"
                            "    border-radius: 3px;\n"
                            "}\n"
                            "QCheckBox::indicator:unchecked\n"
                            "{\n"
                            "\tborder: 2px solid #747474;\n"
                            "    background-color: #ffffff;\n"
                            "\timage: url(:/img/unchecked.png);\n"
                            "}\n"
                            "QCheckBox::indicator:checked\n"
                            "{\n"
                            "\tbackground-color: #2d2d2d;\n"
                            "    border: 2px solid #2d2d2d;\n"
                            "\timage: url(:/img/checked.png);\n"
                            "}";
constexpr char cacheContainer[] = "border: 1px solid black;\n"
                                  "border-radius: 15px;\n"
                                  "background-color: #F0F0F0;\n"
                                  "color: black;";
constexpr char cacheCover[] = "border: 1px solid black;\n"
                              "border-radius: 15px;\n"
                              "background-color: white;\n"
                              "color: black;";
constexpr char roundButton[] = "QPushButton\n"
                               "{\n"
                               "\tborder: 1px solid black;\n"
                               "\tborder-radius: 15px;\n"
                               "\tbackground-color: #F0F0F0;\n"
                               "\tcolor: black;\n"
                               "}\n"
                               "\n"
                               "QPushButton:disabled\n"
                               "{\n"
                               "\tborder: 1px solid black;\n"
                               "\tborder-radius: 15px;\n"
                               "\tbackground-color: #D9D9D9;\n"
                               "\tcolor: black;\n"
                               "}";
constexpr char deleteButton[] = "QPushButton\n"
                                "{\n"
                                "\tborder: 1px solid #C82909;\n"
                                "\tborder-radius: 15px;\n"
                                "\tbackground-color: #F0F0F0;\n"
                                "\tcolor: black;\n"
                                "}";
constexpr char blackText[] = "background-color: transparent;\n"
                             "color: black;";
constexpr char greyText[] = "background-color: transparent;\n"
                            "color: #2e2e2e;";
constexpr char makerMark[] = "background: transparent;\n"
                             "color: #2e2e2e;";
constexpr char versionText[] = "background-color: transparent;\n"
                               "color: #545454;";
constexpr char veil[] = "background-color: qlineargradient(spread:pad, x1:0, y1:0, x2:1, y2:0, "
                        "stop:0 rgba(0, 0, 0, 150), stop:1 rgba(0, 0, 0, 150));";
constexpr char card[] = "background-color: white;\n"
                        "border-radius: 8px;";

} // namespace Sheet

struct SheetRow
{
    const char *name;
    const char *sheet;
};

constexpr SheetRow sheetRows[] = {
    {"SideMenu", Sheet::sideMenu},
    {"AppLogoBanner", Sheet::banner},
    {"Separator", Sheet::sideLabel},
    {"ClockTxt", Sheet::sideLabel},
    {"SeparatorMenu", Sheet::pageRule},
    {"SubTitleIndex", Sheet::sideTitle},
    {"SubTitleSettings", Sheet::sideTitle},
    {"SubTitleIndexMain", Sheet::sectionTitle},
    {"SubTitleIndexFiles", Sheet::sectionTitle},
    {"SubTitleIndexSettings", Sheet::sectionTitle},
    {"SubTitleIndexSettings_2", Sheet::sectionTitle},
    {"AboutSubtitleSettings", Sheet::sectionTitle},
    {"SubTitleIndexHelp", Sheet::sectionTitle},
    {"NavMainBtn", Sheet::navigation},
    {"NavSettingsBtn", Sheet::navigation},
    {"NavHelpBtn", Sheet::navigation},
    {"MainMenu", Sheet::page},
    {"SettingsMenu", Sheet::page},
    {"HelpMenu", Sheet::page},
    {"NewProject", Sheet::action},
    {"ImportProject", Sheet::action},
    {"listWidget", Sheet::boards},
    {"CheckUpdates", Sheet::checkBox},
    {"OnlyViewData", Sheet::checkBox},
    {"CompressFiles", Sheet::checkBox},
    {"BetterPerformance", Sheet::checkBox},
    {"BetterX2", Sheet::checkBox},
    {"widget", Sheet::cacheContainer},
    {"CleanedCacheW", Sheet::cacheCover},
    {"CleanedCacheS", Sheet::cacheCover},
    {"ClearCacheBtn", Sheet::roundButton},
    {"RedoFolder", Sheet::roundButton},
    {"DeleteAll", Sheet::deleteButton},
    {"CodeNameProgram", Sheet::blackText},
    {"BetaMessage", Sheet::greyText},
    {"LogoEnterprise", Sheet::makerMark},
    {"VersionProgram", Sheet::versionText},
    {"UpdateAdvisor", Sheet::veil},
    {"FrameUpdater", Sheet::card},
};
