#include "platform/resource.h"
#include "resources/resource_ids.h"

#include <gtest/gtest.h>

TEST(Resource, the_atlases_are_bitmaps_of_512_by_256_pixels) {
    for (const int id : {RESOURCE_ATLAS_A, RESOURCE_ATLAS_B}) {
        BitmapPixels pixels;
        ASSERT_EQ(resource_bitmap(id, &pixels), 0) << id;
        EXPECT_EQ(pixels.width, 512) << id;
        EXPECT_EQ(pixels.height, 256) << id;
        EXPECT_EQ(pixels.bytes.size(), 512u * 256u * 3u) << id;
    }
}

TEST(Resource, the_atlases_have_the_ids_139_and_141) {
    EXPECT_EQ(RESOURCE_ATLAS_A, 139);
    EXPECT_EQ(RESOURCE_ATLAS_B, 141);
}

TEST(Resource, the_two_atlases_differ) {
    BitmapPixels a, b;
    ASSERT_EQ(resource_bitmap(RESOURCE_ATLAS_A, &a), 0);
    ASSERT_EQ(resource_bitmap(RESOURCE_ATLAS_B, &b), 0);
    EXPECT_NE(a.bytes, b.bytes);
}

TEST(Resource, an_id_without_a_bitmap_is_reported) {
    BitmapPixels pixels = {3, 3, {1}};
    EXPECT_EQ(resource_bitmap(9999, &pixels), 1);
    EXPECT_TRUE(pixels.bytes.empty());
    EXPECT_EQ(resource_bitmap(-1, &pixels), 1);
}
