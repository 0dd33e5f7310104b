// Gives every test the state of a fresh start: item state, scripted platform and, natively, the system's stand-in.

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"

void ResetForTest() {
    scripted::Reset();
    ResetSystemForTest();
    ResetItemState();
    RefreshScreenSize();
    UseEmptyDataFolder();
}

namespace {

class ResetBeforeEachTest : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { ResetForTest(); }
};

[[maybe_unused]] const bool kRegistered =
    (testing::UnitTest::GetInstance()->listeners().Append(new ResetBeforeEachTest), true);

}  // namespace
