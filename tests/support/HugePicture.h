// SPDX-License-Identifier: MIT
#pragma once

#include <QBuffer>
#include <QImage>
#include <gtest/gtest.h>

/// A small JPEG file that claims to have 60,000 × 60,000 pixels.
inline QByteArray hugePicture()
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, "JPG"));
    // After the marker of a frame: two bytes of length, one of precision, then height and width.
    const qsizetype frame = bytes.indexOf("\xff\xc0");
    EXPECT_GT(frame, 0);
    return bytes.replace(frame + 5, 4, QByteArray::fromHex("ea60ea60"));
}
