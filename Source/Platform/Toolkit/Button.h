#pragma once

#include <map>

#include "Platform/Toolkit/Control.h"
#include "Platform/Toolkit/ImageView.h"
#include "Platform/Toolkit/Label.h"

namespace zornic {

enum class ControlState { Normal = 0, Highlighted = 1, Disabled = 2, Selected = 4 };
enum class ButtonType { Custom = 0, System = 1 };

/** A control with a title and an image, side by side and centred, that differ by state; what a state lacks is
   the normal state's. Subclasses change their places after the base's layout. Main thread. */
class Button : public Control {
public:
    explicit Button(ButtonType type = ButtonType::Custom);
    void didMake() override;

    std::string titleForState(ControlState state) const;
    void setTitle(const std::string& title, ControlState state);
    std::optional<Color> titleColorForState(ControlState state) const;
    void setTitleColor(Color color, ControlState state);
    Image imageForState(ControlState state) const;
    void setImage(const Image& image, ControlState state);
    Image backgroundImageForState(ControlState state) const;
    void setBackgroundImage(const Image& image, ControlState state);
    const std::shared_ptr<Label>& titleLabel() const { return _titleLabel; }
    const std::shared_ptr<ImageView>& imageView() const { return _imageView; }
    EdgeInsets contentEdgeInsets() const { return _contentInsets; }
    void setContentEdgeInsets(const EdgeInsets& insets);
    EdgeInsets titleEdgeInsets() const { return _titleInsets; }
    void setTitleEdgeInsets(const EdgeInsets& insets);
    EdgeInsets imageEdgeInsets() const { return _imageInsets; }
    void setImageEdgeInsets(const EdgeInsets& insets);

    void setEnabled(bool enabled) override;
    void setSelected(bool selected) override;
    void setHighlighted(bool highlighted) override;
    Size sizeThatFits(Size size) override;
    bool hasIntrinsicSize() const override { return true; }
    void layoutSubviews() override;
    /** Fills the button with the tint and cuts title and image out of it; a button of another look overrides
       it without calling this. */
    void focusDidChange() override;
    void tintColorDidChange() override;
    void drawRect(Canvas& canvas, const Rect& dirty) override;
    std::string accessibilityText() const override { return titleForState(ControlState::Normal); }
    std::string accessibilityImage() const override { return imageForState(ControlState::Normal).name(); }

protected:
    ControlState currentState() const;

private:
    void contentChanged();
    bool hasOwnLook(ControlState state) const;
    Size titleSize(double room) const;

    struct Content {
        std::optional<std::string> title;
        std::optional<Color> titleColor;
        Image image, backgroundImage;
    };
    const ButtonType _type;
    std::map<ControlState, Content> _contents;
    std::shared_ptr<Label> _titleLabel;
    std::shared_ptr<ImageView> _imageView;
    EdgeInsets _contentInsets, _titleInsets, _imageInsets;
    bool _showsFocusFill = false;
};

}  // namespace zornic
