// The options: full screen, music, sound and the graphic quality. The choosers
// show the state in force when the menu opens, and the state follows them when
// the player goes back.
#include "audio/audio.h"
#include "graphics/graphics.h"
#include "menus/screens/screens.h"

namespace {

struct Quality {
    const char* text;
    int textureDetail;
    int antiAliasing;
    int anisotropy;
};

constexpr Quality qualities[] = {
    {"very low", 2, 1, 1}, {"low", 1, 1, 1},       {"normal", 0, 1, 1},
    {"high", 0, 2, 2},     {"very high", 0, 4, 4}, {"best", 0, 8, 8},
};
constexpr unsigned int off = 0, on = 1;

// The row of the table that the state in force stands for.
unsigned int detectQuality() {
    TRACE_LOCATION("Menu_Options::detectQuality");
    const int detail = GLTextureManager::getTextureDetailLevel();
    if (detail == 2) return 0;
    if (detail == 1) return 1;
    const int samples = GLWindow::getAntiAliasingMode();
    if (samples > 7) return 5;
    if (samples >= 4) return 4;
    if (samples < 2) return 2;
    return 3;
}

// A new context loses every texture and display list, so both are made again.
void applyQuality(const Quality& row) {
    TRACE_LOCATION("Menu_Options::applyQuality");
    // The splash covers the seconds that the reload takes.
    if (row.textureDetail != GLTextureManager::getTextureDetailLevel()) {
        GLWindow::setAntiAliasingMode(row.antiAliasing);
        SplashScreen::run();
        GLTextureManager::setTextureDetailLevel(row.textureDetail);
        LevelGeometryRenderer::initialise();
        SplashScreen::stop();
    } else if (GLWindow::getAntiAliasingMode() != row.antiAliasing) {
        GLWindow::setAntiAliasingMode(row.antiAliasing);
        SplashScreen::run();
        GLTextureManager::reloadAllTextures();
        LevelGeometryRenderer::initialise();
        SplashScreen::stop();
    }
    GLTextureManager::setAnisotropicFilteringLevel(row.anisotropy);
}

void goBack(GuiWidget* button) {
    TRACE_LOCATION("Menu_Options::goBack");
    if (auto* options = dynamic_cast<Menu_Options*>(button->screen)) options->commitSettings();
    MenuHandlers::goBack(button);
}

GuiOptionChooser* addChooser(GuiScreen& screen, const MenuConfig& config, const std::string& name,
                             const std::vector<const char*>& texts) {
    TRACE_LOCATION("Menu_Options::addChooser");
    GuiOptionChooser* chooser = config.makeChooser(name, config.ownFloat("optionChooserFontSizes"));
    chooser->setOverSound(config.ownText("optionChooserSound_over"));
    chooser->setClickedSound(config.ownText("optionChooserSound_clicked"));
    for (const char* text : texts) chooser->addOption(text);
    screen.addWidget(chooser);
    return chooser;
}

}  // namespace

Menu_Options::Menu_Options() {
    TRACE_LOCATION("Menu_Options::Menu_Options");
    drawOverGame(*this);
    const MenuConfig config("cfg\\menu_options.cfg");
    addWidget(config.makeLogo());
    const float labelSize = config.ownFloat("labelFontSizes");
    addWidget(config.makeLabel("Fullscreen", "fullscreenLabel", labelSize));
    addWidget(config.makeLabel("Music", "musicLabel", labelSize));
    addWidget(config.makeLabel("Sound", "soundLabel", labelSize));
    addWidget(config.makeLabel("Graphic quality", "graphicQualityLabel", labelSize));
    fullscreenChooser = addChooser(*this, config, "fullscreenChooser", {"off", "on"});
    musicChooser = addChooser(*this, config, "musicChooser", {"off", "on"});
    soundChooser = addChooser(*this, config, "soundChooser", {"off", "on"});
    std::vector<const char*> qualityTexts;
    for (const Quality& row : qualities) qualityTexts.push_back(row.text);
    graphicQualityChooser = addChooser(*this, config, "graphicQualityChooser", qualityTexts);
    GuiAnimatedButton* back =
        config.makeButton("backButton", MenuHandlers::clicked<goBack>, MenuHandlers::pressed<goBack>);
    addWidget(back);
    setDefaultFocusWidget(back);

    GuiWidget* order[] = {fullscreenChooser, musicChooser, soundChooser, graphicQualityChooser, back};
    for (int i = 0; i < 4; ++i) {
        order[i]->addFocusTraversal(VirtualKey::down, order[i + 1]);
        order[i + 1]->addFocusTraversal(VirtualKey::up, order[i]);
    }
    for (int i = 0; i < 3; ++i) order[i]->addFocusTraversal(VirtualKey::tab, order[i + 1]);
    graphicQualityChooser->addFocusTraversal(VirtualKey::tab, fullscreenChooser);
    back->addFocusTraversal(VirtualKey::tab, fullscreenChooser);

    fullscreenChooser->setCurrentOption(on);
    musicChooser->setCurrentOption(on);
    soundChooser->setCurrentOption(on);
    graphicQualityChooser->setCurrentOption(5);
    detectSettings();
}

void Menu_Options::detectSettings() {
    TRACE_LOCATION("Menu_Options::detectSettings");
    graphicQualityChooser->setCurrentOption(detectQuality());
    fullscreenChooser->setCurrentOption(GLWindow::isFullscreen() ? on : off);
    soundChooser->setCurrentOption(SoundSystem::getVolume() != 0.0f ? on : off);
    musicChooser->setCurrentOption(MusicSystem::getVolume() != 0 ? on : off);
    commitSettings();
}

void Menu_Options::reset() {
    TRACE_LOCATION("Menu_Options::reset");
    detectSettings();
    GuiScreen::reset();
}

void Menu_Options::commitSettings() {
    TRACE_LOCATION("Menu_Options::commitSettings");
    const bool fullscreen = fullscreenChooser->currentOption == on;
    if (fullscreen && !GLWindow::isFullscreen())
        GLWindow::setFullscreen(true, GLWindow::getScreenWidth(), GLWindow::getScreenHeight());
    else if (!fullscreen && GLWindow::isFullscreen())
        GLWindow::setFullscreen(false, 800, 600);
    SoundSystem::setVolume(soundChooser->currentOption == on ? 1.0f : 0.0f);
    MusicSystem::setVolume(musicChooser->currentOption == on ? 255 : 0);
    applyQuality(qualities[std::min<unsigned int>(graphicQualityChooser->currentOption, 5)]);
}
