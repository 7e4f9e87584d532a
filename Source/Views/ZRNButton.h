#pragma once

#include "Platform/Toolkit/Button.h"

namespace zornic {

/** A button of the Now Playing screen: it can stand on a bezel, shows that it is chosen by the tint of its
   image, and that the knob is on it by a fill of the tint out of which its text is cut. Main thread. */
class ZRNButton : public Button {
public:
    static std::shared_ptr<ZRNButton> buttonWithType(ButtonType type);
    using Button::Button;

    /** Text whose emphasised part stands between "#": the title is the text without the marks. */
    const std::string& labelTemplateString() const { return _labelTemplateString; }
    void setLabelTemplateString(const std::string& labelTemplate);
    /** Whether it has its bezel under touch, too; with a knob it always has. */
    bool showBezelInTouch() const { return _showBezelInTouch; }
    void setShowBezelInTouch(bool show);

    void setSelected(bool selected) override;
    void focusDidChange() override;
    void didMoveToWindow() override;
    void layoutSubviews() override;

private:
    void updateFocusColorLayer(bool knob, bool focused);

    std::shared_ptr<Layer> _focusColorLayer;
    bool _showBezelInTouch = false;
    std::string _labelTemplateString;
};

/** How title and image are laid over what the button's layer draws below them. Both stay on top of it. */
void ZRNCompositeButtonContent(const Button& button, CompositingMode title, CompositingMode image);

}  // namespace zornic
