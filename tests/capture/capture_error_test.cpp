#include "capture/capture_error.h"

#include <gtest/gtest.h>

namespace trovel {
namespace {

using enum CaptureError::Kind;

TEST(CaptureError, HasOneSentenceForTheUser) {
    EXPECT_EQ(userText({noMatchingDisplay, {}}), "Could not find the target display.");
    EXPECT_EQ(userText({cropFailed, {}}), "Failed to crop the captured image.");
}

TEST(CaptureError, OfTheSystemEndsInTheSystemsOwnWords) {
    EXPECT_EQ(userText({sckFailed, "No permission."}), "Screen capture failed: No permission.");
    EXPECT_EQ(userText({sckFailed, ""}), "Screen capture failed: ");
}

TEST(CaptureError, SaysNothingAboutACancel) {
    EXPECT_EQ(userText({cancelled, {}}), std::nullopt);
}

} // namespace
} // namespace trovel
