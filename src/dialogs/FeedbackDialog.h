#pragma once

#include "dialogs/ContactChannel.h"
#include "platform/Bundle.h"
#include "platform/Sound.h"
#include "platform/Workspace.h"
#include "platform/ui/Alert.h"
#include "platform/ui/Images.h"
#include "platform/ui/View.h"

#include <memory>
#include <string>

namespace fernhop {

/// The dialog that lists the contact channels as buttons. Main thread only.
class FeedbackDialog {
  public:
    /// What the dialog uses; must outlive it.
    struct Sources {
        const Bundles &bundles;
        const ui::Images &images;
        Workspace &workspace;
        Sound &sound;
        ui::AlertPresenter &alerts;
    };

    explicit FeedbackDialog(Sources dialogSources) : sources(dialogSources) {}

    /// Shows the dialog and returns when it is closed.
    void showFeedbackDialog() const;

    /// The dialog's content: a header and a row for each channel.
    [[nodiscard]] std::shared_ptr<ui::View> makeFeedbackView() const;

    /// A channel's icon; null when its PNG cannot be read, or when there is neither PNG nor symbol.
    [[nodiscard]] ui::ImageReference contactIcon(const ContactChannel &channel, double size) const;

    /// Opens the link in the identifier of the button `sender`; the dialog stays open.
    void openContactFromButton(const Object *sender) const;

    /// Opens a link with the system's handler; beeps when the text is not a URL.
    void openContact(const std::string &urlString) const;

  private:
    [[nodiscard]] std::shared_ptr<ui::View> makeRow(const ContactChannel &channel) const;

    Sources sources;
};

} // namespace fernhop
