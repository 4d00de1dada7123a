#include "core/base/Fault.h"
#include "documents/drawings/Drawings.h"

#include <gtest/gtest.h>

TEST(FitPicture, KeepsProportionsAndCentresAcrossTheFreeDirection) {
    const struct {
        double x;
        double y;
        PictureFrame area;
        PictureFrame fitted;
    } cases[] = {
        {100, 100, {5, 7, 200, 200}, {5, 7, 200, 200}},
        {400, 100, {10, 20, 200, 200}, {10, 95, 200, 50}},
        {200, 100, {10, 20, 400, 100}, {60 - 50 + 100, 20, 200, 100}},
        {100, 200, {0, 0, 200, 200}, {50, 0, 100, 200}},
        {100, 110, {0, 0, 100, 400}, {0, 145, 100, 110}},
    };
    for (const auto& c : cases) {
        const PictureFrame fitted = FitPicture(c.x, c.y, c.area);
        EXPECT_DOUBLE_EQ(fitted.left, c.fitted.left) << c.x << " : " << c.y;
        EXPECT_DOUBLE_EQ(fitted.top, c.fitted.top) << c.x << " : " << c.y;
        EXPECT_DOUBLE_EQ(fitted.width, c.fitted.width) << c.x << " : " << c.y;
        EXPECT_DOUBLE_EQ(fitted.height, c.fitted.height) << c.x << " : " << c.y;
    }
    EXPECT_THROW(FitPicture(0, 10, {0, 0, 5, 5}), Fault);
    EXPECT_THROW(FitPicture(10, 0, {0, 0, 5, 5}), Fault);
}
