#pragma once

#include <string>

namespace trovel {

/// What the product is called and where its public places are. Build configuration.
struct Product {
    std::string displayName = "Trovel";
    /// The web page of the changelog, and the mail address for questions.
    std::string changelogUrl;
    std::string supportEmail;
};

} // namespace trovel
