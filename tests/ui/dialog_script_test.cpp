// The harness itself: a dialog that misbehaves must fail its test, and what a script saw must be what was shown.

#include "tests/ui/dialog_script.h"

#include "item/item_state.h"
#include "platform/dialogs.h"
#include "resources/resource_ids.h"
#include "tests/ui/today_frame.h"

#include <gtest/gtest-spi.h>

namespace {

constexpr int kQuestionButton = 900;
constexpr int kNestedButton = 901;
HWND frameWindow = nullptr;
int question = 0;

INT_PTR CALLBACK SampleProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) {
        for (const int id : {kQuestionButton, kNestedButton}) {
            CreateWindowExW(0, L"Button", L"Button", WS_CHILD | WS_VISIBLE, 4, id == kNestedButton ? 40 : 4, 80, 24,
                            dialog, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), itemState.instance, nullptr);
        }
        return TRUE;
    }
    if (message != WM_COMMAND) {
        return FALSE;
    }
    switch (LOWORD(wParam)) {
        case kQuestionButton:
            question = MessageBoxW(dialog, L"Go on?", L"Question", MB_OKCANCEL | MB_ICONQUESTION);
            return TRUE;
        case kNestedButton:
            platform::RunDialog(itemState.instance, IDD_TODAY_OPTIONS, dialog, SampleProc);
            return TRUE;
        case IDOK:
            EndDialog(dialog, IDOK);
            return TRUE;
        default:
            return FALSE;
    }
}

void OpenSample() {
    platform::RunDialog(itemState.instance, IDD_TODAY_OPTIONS, frameWindow, SampleProc);
}

class DialogScript : public testing::Test {
  protected:
    ui::TodayFrame frame{ui::kScreenSizes[0]};
    void SetUp() override { frameWindow = frame.window; }
};

TEST_F(DialogScript, Steps_follow_a_nested_dialog_and_come_back) {
    std::vector<HWND> seen;
    ui::RunDialogScript(OpenSample, {[&](HWND dialog) {
                                         seen.push_back(dialog);
                                         ui::Press(dialog, kNestedButton);
                                     },
                                     [&](HWND dialog) {
                                         seen.push_back(dialog);
                                         ui::Press(dialog, IDOK);
                                     },
                                     [&](HWND dialog) {
                                         seen.push_back(dialog);
                                         ui::SaveScreen(frame, "dialog-script");
                                         ui::Press(dialog, IDOK);
                                     }});
    ASSERT_EQ(seen.size(), 3u);
    EXPECT_NE(seen[0], seen[1]);
    EXPECT_EQ(seen[0], seen[2]);
}

TEST_F(DialogScript, A_message_box_is_recorded_and_answered) {
    const auto boxes = ui::RunDialogScript(OpenSample,
                                           {[](HWND dialog) { ui::Press(dialog, kQuestionButton); },
                                            [](HWND dialog) {
                                                EXPECT_EQ(question, IDCANCEL);
                                                ui::Press(dialog, IDOK);
                                            }},
                                           {IDCANCEL});
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, L"Go on?");
    EXPECT_EQ(boxes[0].caption, L"Question");
    EXPECT_EQ(boxes[0].flags, static_cast<UINT>(MB_OKCANCEL | MB_ICONQUESTION));
}

TEST_F(DialogScript, What_a_script_does_not_expect_fails_the_test) {
    EXPECT_NONFATAL_FAILURE(ui::RunDialogScript(OpenSample, {}), "still open after the last step");
    const ui::Step ok = [](HWND dialog) { ui::Press(dialog, IDOK); };
    EXPECT_NONFATAL_FAILURE(ui::RunDialogScript(OpenSample, {ok, ok}), "before its last step");
    EXPECT_NONFATAL_FAILURE(ui::RunDialogScript(OpenSample, {ok}, {IDOK}), "message boxes shown and expected");
    testing::TestPartResultArray failures;
    {
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &failures);
        ui::RunDialogScript(OpenSample, {[](HWND dialog) { ui::Press(dialog, kQuestionButton); }, ok});
    }
    EXPECT_GT(failures.size(), 0) << "a message box nobody expected";
}

TEST_F(DialogScript, The_screens_picture_shows_the_dialog_over_the_frame) {
    Picture picture;
    POINT corner = {};
    ui::RunDialogScript(OpenSample, {[&](HWND dialog) {
                            ClientToScreen(dialog, &corner);
                            ScreenToClient(frame.window, &corner);
                            picture = TakeScreenPicture(frame.window);
                            EXPECT_EQ(picture.At(corner.x + 1, corner.y + 1), ui::PixelAt(dialog, 1, 1));
                            ui::Press(dialog, IDOK);
                        }});
    EXPECT_EQ(picture.At(235, 5), ui::kTaskbar);
    EXPECT_EQ(picture.At(239, 319), ui::kWatermark);
}

}  // namespace
