#include "platform/macos/Reference.h"
#include "platform/macos/ui/ControlLinks.h"
#include "platform/macos/ui/LinkedControls.h"
#include "platform/macos/ui/Styles.h"

namespace fernhop::macos {

namespace {

class LayerLink : public ViewLink {
  public:
    LayerLink(std::shared_ptr<ui::View> view, const ui::Layer &description, NSView *painted)
        : ViewLink(std::move(view)), layer(description), shown(painted) {
        [painted setFernhopLink:this];
    }
    ~LayerLink() override { [shown.get() setFernhopLink:nullptr]; }

    void show() override { paintLayer(shown.get(), layer); }
    void take() override {}

  private:
    const ui::Layer layer;
    const Reference<NSView> shown;
};

} // namespace

LinkedView linkLayer(const std::shared_ptr<ui::View> &view, NSView *painted) {
    return {std::make_unique<LayerLink>(view, view->layer.value(), painted), painted};
}

} // namespace fernhop::macos
