#include "platform/linux/x11/properties.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

namespace trovel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PropertiesTest : public testing::Test {
protected:
    PropertiesTest() {
        xcb_create_window(x_->get(), XCB_COPY_FROM_PARENT, window_, x_->root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    }

    void set(std::uint8_t format, std::uint32_t count, void const* values) const {
        auto const name = x_->atom("TROVEL_TEST");
        xcb_change_property(x_->get(), XCB_PROP_MODE_REPLACE, window_, name, XCB_ATOM_INTEGER,
                            format, count, values);
    }
    [[nodiscard]] Property read(std::uint32_t mostWords = 100) const {
        return readProperty(*x_, window_, "TROVEL_TEST", mostWords);
    }

    std::unique_ptr<XcbConnection> x_ = XcbConnection::open();
    xcb_window_t window_ = xcb_generate_id(x_->get());
};

TEST_F(PropertiesTest, BytesAreReadAsBytesOnly) {
    std::string const text("a\0b\xff", 4);
    set(8, 4, text.data());
    auto const property = read();
    EXPECT_EQ(bytesOf(property), text);
    EXPECT_THAT(wordsOf(property), IsEmpty());
    EXPECT_EQ(wordOf(property), 0U);
}

TEST_F(PropertiesTest, WordsAreReadAsWordsOnly) {
    constexpr std::array<std::uint32_t, 3> kWords{7, 0xffffffff, 9};
    set(32, kWords.size(), kWords.data());
    auto const property = read();
    EXPECT_THAT(wordsOf(property), ElementsAre(7U, 0xffffffffU, 9U));
    EXPECT_EQ(wordOf(property), 7U);
    EXPECT_EQ(bytesOf(property), "");
    EXPECT_THAT(wordsOf(read(2)), ElementsAre(7U, 0xffffffffU)) << "no more than was asked for";
}

TEST_F(PropertiesTest, AnAbsentPropertyAndAWindowThatIsGoneSayNothing) {
    auto const absent = read();
    ASSERT_TRUE(absent);
    EXPECT_EQ(bytesOf(absent), "");
    EXPECT_THAT(wordsOf(absent), IsEmpty());
    xcb_destroy_window(x_->get(), window_);
    auto const gone = read();
    EXPECT_FALSE(gone);
    EXPECT_EQ(bytesOf(gone), "");
    EXPECT_THAT(wordsOf(gone), IsEmpty());
    EXPECT_EQ(wordOf(gone), 0U);
}

TEST_F(PropertiesTest, ASelectionBelongsToWhoTookItLast) {
    auto const owner = [this] { return selectionOwner(*x_, "TROVEL_TEST_SELECTION"); };
    EXPECT_EQ(owner(), xcb_window_t{XCB_WINDOW_NONE});
    xcb_set_selection_owner(x_->get(), window_, x_->atom("TROVEL_TEST_SELECTION"),
                            XCB_CURRENT_TIME);
    EXPECT_EQ(owner(), window_);
    xcb_destroy_window(x_->get(), window_);
    EXPECT_EQ(owner(), xcb_window_t{XCB_WINDOW_NONE});
}

} // namespace
} // namespace trovel
