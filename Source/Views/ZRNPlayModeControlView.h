#pragma once

#include "Views/ZRNButton.h"

namespace zornic {

/** The row of repeat, create and shuffle buttons at the bottom of Now Playing. A hidden one leaves its place
   empty, so that the others stay where the hand expects them. Main thread. */
class ZRNPlayModeControlView : public View {
public:
    using View::View;
    void didMake() override;

    bool creatingBrivo() const { return _creatingBrivo; }
    void setCreatingBrivo(bool creating) { _creatingBrivo = creating; }
    const std::shared_ptr<ZRNButton>& repeatButton() const { return _repeatButton; }
    const std::shared_ptr<ZRNButton>& brivoButton() const { return _brivoButton; }
    const std::shared_ptr<ZRNButton>& shuffleButton() const { return _shuffleButton; }

    void layoutSubviews() override;

private:
    std::shared_ptr<ZRNButton> addButton();

    bool _creatingBrivo = false;
    std::shared_ptr<ZRNButton> _repeatButton, _brivoButton, _shuffleButton;
};

}  // namespace zornic
