// How every screen makes its widgets from its two configuration files, so that
// all buttons, labels and choosers of the game share one look.
#include "audio/audio.h"
#include "menus/screens/screens.h"
#include "platform/platform.h"

MenuConfig::MenuConfig(const char* ownFile) : ownConfig(ownFile), generalConfig("cfg\\menu_general.cfg") {
    TRACE_LOCATION("MenuConfig::MenuConfig");
}

// Buttons and text widgets each have a shadow style of their own, under the
// keys "buttonDropShadow..." and "textDropShadow...".
void MenuConfig::styleShadow(GuiShadowCaster& caster, const std::string& kind) const {
    TRACE_LOCATION("MenuConfig::styleShadow");
    const std::string colour = kind + "DropShadowColor_", offset = kind + "DropShadowOffset_";
    caster.dropShadow.on = true;
    caster.setDropShadowColor(
        generalConfig.getVarAsFloat(colour + "r"), generalConfig.getVarAsFloat(colour + "g"),
        generalConfig.getVarAsFloat(colour + "b"), generalConfig.getVarAsFloat(colour + "a"));
    caster.setDropShadowOffset(generalConfig.getVarAsFloat(offset + "x"),
                               generalConfig.getVarAsFloat(offset + "y"));
}

GuiAnimatedButton* MenuConfig::makeButton(const std::string& name, GuiMouseCallback clicked,
                                          GuiKeyCallback pressed) const {
    TRACE_LOCATION("MenuConfig::makeButton");
    auto* button = new GuiAnimatedButton();
    button->frameRate = generalConfig.getVarAsFloat("menuAnimationSpeeds");
    styleShadow(*button, "button");
    button->setOverSound(generalConfig.getVarAsString("menuOverSound"));
    button->setClickedSound(generalConfig.getVarAsString("menuClickedSound"));
    button->setPosition(ownInt(name + "_x"), ownInt(name + "_y"));
    button->setSize(ownInt(name + "_w"), ownInt(name + "_h"));
    button->setFramesOutOfFocus(ownText(name + "_frames_outOfFocus"));
    button->setFramesInFocus(ownText(name + "_frames_inFocus"));
    button->setFramesClicked(ownText(name + "_frames_clicked"));
    button->onMousePressed = clicked;
    button->onKeyboardPressed = pressed;
    button->onMousePressedDelay = buttonActionDelay;
    button->onKeyboardPressedDelay = buttonActionDelay;
    return button;
}

GuiImage* MenuConfig::makeLogo() const {
    TRACE_LOCATION("MenuConfig::makeLogo");
    auto* logo = new GuiImage();
    logo->setImage(generalConfig.getVarAsString("logo"));
    const GLTexture& image = logo->getImage();
    logo->setSize(image.width, image.height);
    logo->setPosition(static_cast<int>(generalConfig.getVarAsFloat("logo_x")) - image.width / 2,
                      static_cast<int>(generalConfig.getVarAsFloat("logo_y")) - image.height / 2);
    return logo;
}

void MenuConfig::styleText(GuiTextWidget& widget) const {
    TRACE_LOCATION("MenuConfig::styleText");
    widget.setFont(generalConfig.getVarAsString("menuFont"));
    widget.setColor(
        generalConfig.getVarAsFloat("menuFontColor_r"), generalConfig.getVarAsFloat("menuFontColor_g"),
        generalConfig.getVarAsFloat("menuFontColor_b"), generalConfig.getVarAsFloat("menuFontColor_a"));
    styleShadow(widget, "text");
}

GuiLabel* MenuConfig::makeLabel(const std::string& text, const std::string& prefix, float fontSize) const {
    TRACE_LOCATION("MenuConfig::makeLabel");
    auto* label = new GuiLabel();
    styleText(*label);
    label->setText(text);
    label->setFontSize(fontSize);
    label->setPosition(ownInt(prefix + "_x"), ownInt(prefix + "_y"));
    return label;
}

// Text read whole from the file the configuration names; a file that can't be
// read, or of fewer than 2 bytes, leaves the box empty.
GuiTextBox* MenuConfig::makeTextBox(const std::string& prefix) const {
    TRACE_LOCATION("MenuConfig::makeTextBox");
    auto* box = new GuiTextBox();
    styleText(*box);
    box->centered = true;
    box->setPosition(ownInt(prefix + "_x"), ownInt(prefix + "_y"));
    box->setSize(ownInt(prefix + "_w"), 1);
    box->setFontSize(ownFloat(prefix + "_fontSize"));
    MemoryFile file;
    file.open(ownText(prefix + "_text"));
    if (file.is_open() && file.size() >= 2)
        box->setText(std::string(reinterpret_cast<const char*>(file.getDataAhead()), file.size()));
    return box;
}

GuiOptionChooser* MenuConfig::makeChooser(const std::string& name, float fontSize) const {
    TRACE_LOCATION("MenuConfig::makeChooser");
    auto* chooser = new GuiOptionChooser();
    styleText(*chooser);
    chooser->setDropShadowColor(chooser->dropShadow.r, chooser->dropShadow.g, chooser->dropShadow.b,
                                chooser->dropShadow.a);
    chooser->setDropShadowOffset(chooser->dropShadow.offsetX, chooser->dropShadow.offsetY);
    chooser->setFontSize(fontSize);
    chooser->setPosition(ownInt(name + "_x"), ownInt(name + "_y"));
    chooser->setSize(ownInt(name + "_w"), ownInt(name + "_h"));
    chooser->setLeftButtonFramesOutOfFocus(ownText("optionChooserLeftButtons_frames_outOfFocus"));
    chooser->setLeftButtonFramesInFocus(ownText("optionChooserLeftButtons_frames_inFocus"));
    chooser->setLeftButtonFramesClicked(ownText("optionChooserLeftButtons_frames_clicked"));
    chooser->setRightButtonFramesOutOfFocus(ownText("optionChooserRightButtons_frames_outOfFocus"));
    chooser->setRightButtonFramesInFocus(ownText("optionChooserRightButtons_frames_inFocus"));
    chooser->setRightButtonFramesClicked(ownText("optionChooserRightButtons_frames_clicked"));
    return chooser;
}

void drawOverGame(GuiScreen& screen) {
    TRACE_LOCATION("Menus::drawOverGame");
    screen.clearBackground = false;
    screen.swapBuffers = false;
}

std::vector<GuiAnimatedButton*> addButtonColumn(GuiScreen& screen, const MenuConfig& config,
                                                const std::vector<MenuButton>& buttons) {
    TRACE_LOCATION("Menus::addButtonColumn");
    std::vector<GuiAnimatedButton*> column;
    for (const MenuButton& entry : buttons) {
        GuiAnimatedButton* button = config.makeButton(entry.name, entry.clicked, entry.pressed);
        screen.addWidget(button);
        column.push_back(button);
    }
    for (std::size_t i = 0; i + 1 < column.size(); ++i) {
        column[i]->addFocusTraversal(VirtualKey::down, column[i + 1]);
        column[i]->addFocusTraversal(VirtualKey::tab, column[i + 1]);
        column[i + 1]->addFocusTraversal(VirtualKey::up, column[i]);
    }
    if (!column.empty()) screen.setDefaultFocusWidget(column.front());
    return column;
}

void linkYesNo(GuiAnimatedButton* yes, GuiAnimatedButton* no) {
    TRACE_LOCATION("Menus::linkYesNo");
    no->addFocusTraversal(VirtualKey::left, yes);
    no->addFocusTraversal(VirtualKey::tab, yes);
    yes->addFocusTraversal(VirtualKey::right, no);
    yes->addFocusTraversal(VirtualKey::tab, no);
}

namespace MenuHandlers {

void goBack(GuiWidget*) {
    TRACE_LOCATION("MenuHandlers::goBack");
    GameMenus::setCurrentMenu(GameMenus::getLastMenu());
}

void settle(GuiWidget* button) {
    TRACE_LOCATION("MenuHandlers::settle");
    auto* animated = dynamic_cast<GuiAnimatedButton*>(button);
    if (!animated) return;
    animated->setState(GuiAnimatedButton::inFocus);
    animated->resetAnimation();
}

}  // namespace MenuHandlers
