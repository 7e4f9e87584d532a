#pragma once

#include <optional>
#include <string>

#include "Platform/Toolkit/Button.h"
#include "Platform/Toolkit/ViewController.h"

namespace zornic {

/** A message over the whole display, presented by the host: a large title, up to two lines under it and,
   except with a knob, an OK button. A knob's driver leaves it by the car's back button. Main thread. */
class ZRNErrorViewController : public ViewController {
public:
    using ViewController::ViewController;
    ~ZRNErrorViewController() override;

    /** None shows nothing in its place. Both may be set before the view is there. */
    const std::optional<std::string>& errorTitle() const { return _errorTitle; }
    void setErrorTitle(std::optional<std::string> title);
    const std::optional<std::string>& errorMessage() const { return _errorMessage; }
    void setErrorMessage(std::optional<std::string> message);

    /** None before the view is loaded, and in a view that the host gave it; as all three. */
    const std::shared_ptr<Label>& titleLabel() const { return _titleLabel; }
    const std::shared_ptr<Label>& messageLabel() const { return _messageLabel; }
    /** None with a knob. */
    const std::shared_ptr<Button>& okButton() const { return _okButton; }

    void loadView() override;
    void viewDidLoad() override;
    void viewDidLayoutSubviews() override;

    /** Show what is set, where there are labels. */
    void updateTitleLabelText();
    void updateMessageLabelText();
    /** Has the presenter take this screen away. */
    void okButtonTapped();

private:
    std::shared_ptr<Label> addLabel(const Rect& frame);
    void addOKButton(double screenWidth);
    void layOutTitle(double width);

    std::shared_ptr<Label> _titleLabel, _messageLabel;
    std::shared_ptr<Button> _okButton;
    std::optional<std::string> _errorTitle, _errorMessage;
};

}  // namespace zornic
