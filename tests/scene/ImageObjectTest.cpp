// The 2D image render object: sampling, heights, colours and modes.
#include <gtest/gtest.h>

#include <vector>

#include "OSGImage.h"
#include "SamplingStep.h"

TEST(ImageObject, AutomaticStepSamplesEveryFourthPixel) {
    std::vector<unsigned char> grey(1000 * 1000, 7);
    grey[4 * 1000 + 8] = 200;  // row 4, column 8
    OSGImage image(QelImage(grey.data(), 1000, 1000, 1000, 1, QEL_IMAGE_8U), RenderMode::Points, 1,
                   0);
    EXPECT_EQ(image.rows(), 250);
    EXPECT_EQ(image.columns(), 250);
    ASSERT_EQ(image.vertexArray()->size(), 250u * 250u);
    EXPECT_EQ((*image.vertexArray())[249 * 250 + 249], osg::Vec3(996, 996, 7));
    EXPECT_EQ((*image.vertexArray())[1 * 250 + 2], osg::Vec3(4, 8, 200));  // the row feeds x
    EXPECT_EQ(image.maxZ(), 200);
    EXPECT_EQ(image.geometry()->getPrimitiveSet(0)->getMode(), GLenum(GL_POINTS));

    image.setRenderMode(RenderMode::Faces);
    EXPECT_EQ(image.geometry()->getPrimitiveSet(0)->getNumIndices(), 6u * 249 * 249);
    image.setStep(10);
    EXPECT_EQ(image.rows(), 100);
    EXPECT_EQ(image.geometry()->getPrimitiveSet(0)->getNumIndices(), 6u * 99 * 99);

    EXPECT_EQ(SamplingStep::automatic(1e6), 4);
    EXPECT_EQ(SamplingStep::automatic(2e6 * 2), 2);
    EXPECT_EQ(SamplingStep::automatic(5e7), 8);
    EXPECT_EQ(SamplingStep::automatic(2e8), 15);
}

TEST(ImageObject, SixteenBitAndColourPixels) {
    const unsigned short full[] = {65535, 0};
    OSGImage deep(QelImage(reinterpret_cast<const unsigned char*>(full), 2, 1, 4, 1, QEL_IMAGE_16U),
                  RenderMode::Points, 1, 1);
    EXPECT_FLOAT_EQ((*deep.vertexArray())[0].z(), 255.0f);

    const unsigned char bgr[] = {10, 20, 30};
    OSGImage colour(QelImage(bgr, 1, 1, 3, 3, QEL_IMAGE_8U), RenderMode::Faces, 2, 1);
    EXPECT_NEAR((*colour.vertexArray())[0].z(), 18.15, 1e-4);
    const osg::Vec4 c = (*colour.colorArray())[0];
    EXPECT_NEAR(c.r(), 30 / 255.0, 1e-6);
    EXPECT_NEAR(c.b(), 10 / 255.0, 1e-6);
    colour.applyDefaultColours();  // images keep their own colours
    EXPECT_NEAR((*colour.colorArray())[0].r(), 30 / 255.0, 1e-6);
}
