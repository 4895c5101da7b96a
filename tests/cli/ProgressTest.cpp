#include "cli/Progress.h"

#include <gtest/gtest.h>

namespace quillow::cli {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;

struct Case {
    ProgressState state;
    std::size_t columns;
    const char* line;
};

TEST(Progress, linesOfProgress) {
    const Case cases[] = {
        {{10, 0, 0, milliseconds(0)}, 24, "[              ] 0 of 10"},
        {{10, 5, 0, milliseconds(0)}, 24, "[#######       ] 5 of 10"},
        {{10, 10, 0, milliseconds(0)}, 25, "[##############] 10 of 10"},
        {{10, 5, 2, milliseconds(0)}, 30, "[#####     ] 5 of 10, 2 failed"},
        {{10, 5, 0, milliseconds(2000)}, 40, "[#########          ] 5 of 10, 0:02 left"},
        {{4, 3, 0, minutes(6)}, 10, "3 of 4, 2:"},
        {{4, 3, 0, minutes(6)}, 20, "3 of 4, 2:00 left"},
        {{4, 1, 0, minutes(30)}, 20, "1 of 4, 1:30:00 left"},
        {{4, 1, 0, milliseconds(1999)}, 12, "1 of 4"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(progressLine(c.state, c.columns), c.line);
}

TEST(Progress, aBarIsNeverWiderThanFortyCharacters) {
    EXPECT_EQ(progressLine({2, 1, 0, milliseconds(0)}, 500),
              "[" + std::string(20, '#') + std::string(20, ' ') + "] 1 of 2");
}

} // namespace
} // namespace quillow::cli
