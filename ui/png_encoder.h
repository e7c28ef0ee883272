#pragma once
// A PNG writer tuned for graphs: a few flat colours on white. Pictures of up to 256
// colours go out as a palette image, and the rows are packed with run-length deflate,
// which is several times faster than a general encoder at the same or a smaller size.
#include <QByteArray>
#include <QImage>

namespace quillet {

QByteArray EncodePng(const QImage& image);

}  // namespace quillet
