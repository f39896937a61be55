#include "Platform/Interface/ViewController.h"

#include "Platform/Foundation/Screen.h"
#include "Platform/Interface/View.h"

namespace platform {

ViewController::ViewController(const Coder& /*coder*/) {}

ViewController::ViewController(const std::string& /*nibName*/,
                               const std::shared_ptr<Bundle>& /*bundle*/) {}

std::shared_ptr<View> ViewController::view() {
    if (!view_) {
        view_ = loadView();
        viewDidLoad();
    }
    return view_;
}

std::shared_ptr<View> ViewController::loadView() {
    auto view = make<View>(Screen::mainScreen().bounds());
    view->setBackgroundColor(kBlackColor);
    return view;
}

} // namespace platform
