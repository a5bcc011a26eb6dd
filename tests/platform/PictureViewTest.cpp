#include "platform/PictureView.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

namespace kelvo {
namespace {

TEST(PictureView, ATextThatWouldBeCutMovesToTheLeft) {
    for (const std::string& ion : {std::string("F"), std::string("Nitrate as N"), std::string(64, 'W')}) {
        Picture picture;
        picture.Text(8400, 5930, "(" + ion + ") LogC", 12);
        QImage surface(940, 670, QImage::Format_RGB32);
        surface.fill(Qt::white);
        QPainter painter(&surface);
        PaintPicture(painter, QRectF(surface.rect()), picture);
        painter.end();
        int first = surface.width(), last = -1;
        for (int x = 0; x < surface.width(); ++x)
            for (int y = 0; y < surface.height(); ++y)
                if (surface.pixelColor(x, y).lightness() < 128) {
                    first = std::min(first, x);
                    last = std::max(last, x);
                }
        // The last letter, C, keeps a little air on its right; cut, it would fill the last column.
        EXPECT_LT(last, surface.width() - 1) << ion;
        EXPECT_GT(last, 880) << ion;
        if (ion == "F") {
            EXPECT_NEAR(first, 840, 4) << "what fits stays in its place";
        }
    }
}

}  // namespace
}  // namespace kelvo
