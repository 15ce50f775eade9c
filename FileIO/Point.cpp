#include <NereoFileIO/Point.h>

#include <QHash>

namespace Nereo::Io {

uint qHash(const Point& point)
{
    const uint x = ::qHash(point.x(), 0);
    const uint y = ::qHash(point.y(), 0);
    return y ^ (x << 16 | x >> 16); // so that (1, 2) and (2, 1) differ
}

} // namespace Nereo::Io
