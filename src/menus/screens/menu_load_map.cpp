// Choosing a level from the files in "maps". The list is made once, when the
// menu is built: a new file shows at the next start of the program.
#include "game/game.h"
#include "menus/screens/screens.h"
#include "platform/platform.h"

namespace {

void loadChosenMap(GuiWidget* button) {
    TRACE_LOCATION("Menu_LoadMap::loadChosenMap");
    if (auto* menu = dynamic_cast<Menu_LoadMap*>(button->screen)) Game::map(menu->chosenMap());
}

}  // namespace

Menu_LoadMap::Menu_LoadMap() {
    TRACE_LOCATION("Menu_LoadMap::Menu_LoadMap");
    drawOverGame(*this);
    const MenuConfig config("cfg\\menu_loadMap.cfg");
    addWidget(config.makeLogo());
    addWidget(config.makeLabel("Choose Map to load", "mapLabel", config.ownFloat("labelFontSizes")));
    mapChooser = config.makeChooser("mapChooser", config.ownFloat("optionChooserFontSizes"));
    addWidget(mapChooser);
    GuiAnimatedButton* load = config.makeButton("loadButton", MenuHandlers::clicked<loadChosenMap>,
                                                MenuHandlers::pressed<loadChosenMap>);
    GuiAnimatedButton* back = config.makeButton("backButton", MenuHandlers::clicked<MenuHandlers::goBack>,
                                                MenuHandlers::pressed<MenuHandlers::goBack>);
    addWidget(load);
    addWidget(back);
    back->addFocusTraversal(VirtualKey::up, load);
    back->addFocusTraversal(VirtualKey::tab, load);
    load->addFocusTraversal(VirtualKey::down, back);
    load->addFocusTraversal(VirtualKey::tab, back);
    setDefaultFocusWidget(back);
    buildMapList();
}

void Menu_LoadMap::buildMapList() {
    TRACE_LOCATION("Menu_LoadMap::buildMapList");
    mapList = Platform::findFiles("maps\\*.rill");
    for (const std::string& map : mapList) mapChooser->addOption(map);
    mapChooser->setCurrentOption(1);
}

std::string Menu_LoadMap::chosenMap() const {
    TRACE_LOCATION("Menu_LoadMap::chosenMap");
    const std::vector<std::string>& options = mapChooser->getOptions();
    const std::string name =
        mapChooser->currentOption < options.size() ? options[mapChooser->currentOption] : "";
    return "maps\\" + name;
}
