#pragma once

#include "Platform/Toolkit/Button.h"
#include "Platform/Toolkit/ViewController.h"

namespace zornic {

enum class AlertControllerStyle { ActionSheet = 0, Alert = 1 };
enum class AlertActionStyle { Default = 0, Cancel = 1 };

/** A choice of an alert. Main thread. */
class AlertAction : public Object {
public:
    AlertAction(std::string title, AlertActionStyle style, std::function<void()> handler)
        : _title(std::move(title)), _style(style), _handler(std::move(handler)) {}
    const std::string& title() const { return _title; }
    AlertActionStyle style() const { return _style; }
    const std::function<void()>& handler() const { return _handler; }

private:
    const std::string _title;
    const AlertActionStyle _style;
    const std::function<void()> _handler;
};

/** A question over the screen: title and message (each may be empty) and choices. Choosing dismisses it, then
   runs the choice's handler. The car's back button is the cancel choice. Main thread. */
class AlertController : public ViewController {
public:
    AlertController(std::string title, std::string message, AlertControllerStyle style);
    const std::string& message() const { return _message; }
    AlertControllerStyle preferredStyle() const { return _style; }
    void addAction(std::shared_ptr<AlertAction> action);
    const std::vector<std::shared_ptr<AlertAction>>& actions() const { return _actions; }
    /** As if the driver chose it. */
    void choose(const std::shared_ptr<AlertAction>& action);

    void loadView() override;
    void viewDidLayoutSubviews() override;
    std::shared_ptr<View> preferredFocusedItem() override;
    bool handleBack() override;

private:
    std::shared_ptr<Button> makeButton(const std::shared_ptr<AlertAction>& action);
    /** In the order in which they stand: of a sheet the cancel choices come last. */
    std::vector<std::shared_ptr<Button>> orderedButtons() const;
    /** Bottom of the texts laid out from `top` down within the panel; the message gets at most `room`. */
    double layoutTexts(double top, double width, double room);
    /** Rows of equal buttons; places them when `placed`, from `top` down. Returns their height. */
    double layoutButtons(double top, double width, double room, bool placed);

    const std::string _message;
    const AlertControllerStyle _style;
    std::vector<std::shared_ptr<AlertAction>> _actions;
    std::shared_ptr<View> _panel;
    std::shared_ptr<Label> _titleLabel, _messageLabel;
    std::vector<std::shared_ptr<Button>> _buttons;
    bool _chosen = false;
};

}  // namespace zornic
