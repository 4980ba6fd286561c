#include "editing/safety_copy.h"

#include "form/text.h"
#include "model/core/kept_copies.h"

namespace stelvan::editing {

bool SafetyCopy::mayWrite() {
    if (settled_ || folder_.empty()) return true;
    try {
        static_cast<void>(model::KeptCopies(folder_).keep(window_.operations.path()));
        settled_ = true;
    } catch (const std::exception& failure) {
        settled_ = window_.dialogs.confirm(
            QStringLiteral("The model could not be copied before this first change: %1\n\n"
                           "Go on without a copy? With No nothing is written, and what you typed "
                           "stays.")
                .arg(form::toQt(std::string_view(failure.what()))),
            QStringLiteral("No copy kept"));
    }
    return settled_;
}

}  // namespace stelvan::editing
