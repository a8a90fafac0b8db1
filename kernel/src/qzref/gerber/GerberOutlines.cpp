#include "qzref/gerber/GerberOutlines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace qzref::gerber {

namespace {

constexpr double kDegree = std::numbers::pi / 180;

} // namespace

void AppendArc(Points& out, double cx, double cy, double r, double a0, double a1) {
    double const sweep = a1 - a0;
    int steps = 1;
    if (r > kChordTolerance) {
        double const wanted = std::ceil(std::abs(sweep) / (2 * std::acos(1 - kChordTolerance / r)));
        // A huge radius or sweep from a bad film must not make a huge outline, nor a count out
        // of an int's range; a sweep that is not a number draws one chord.
        steps = wanted >= 4096 ? 4096 : (wanted >= 1 ? static_cast<int>(wanted) : 1);
    }
    for (int i = 1; i <= steps; ++i) {
        double const a = a0 + sweep * i / steps;
        out.push_back(cx + r * std::cos(a));
        out.push_back(cy + r * std::sin(a));
    }
}

Points Circle(double cx, double cy, double r) {
    Points out{cx + r, cy};
    AppendArc(out, cx, cy, r, 0, 2 * std::numbers::pi);
    out.resize(out.size() - 2); // the last point is the first
    return out;
}

Points Rectangle(double cx, double cy, double w, double h) {
    return {cx - w / 2, cy - h / 2, cx + w / 2, cy - h / 2,
            cx + w / 2, cy + h / 2, cx - w / 2, cy + h / 2};
}

Points Obround(double cx, double cy, double w, double h) {
    if (w == h) {
        return Circle(cx, cy, w / 2);
    }
    double const pi = std::numbers::pi;
    Points out;
    if (w > h) {
        double const r = h / 2;
        double const d = w / 2 - r;
        out = {cx + d, cy - r};
        AppendArc(out, cx + d, cy, r, -pi / 2, pi / 2);
        out.push_back(cx - d);
        out.push_back(cy + r);
        AppendArc(out, cx - d, cy, r, pi / 2, 3 * pi / 2);
    } else {
        double const r = w / 2;
        double const d = h / 2 - r;
        out = {cx + r, cy + d};
        AppendArc(out, cx, cy + d, r, 0, pi);
        out.push_back(cx - r);
        out.push_back(cy - d);
        AppendArc(out, cx, cy - d, r, pi, 2 * pi);
    }
    return out;
}

Points RegularPolygon(double cx, double cy, double d, int n, double degrees) {
    Points out;
    for (int i = 0; i < n; ++i) {
        double const a = (degrees + 360.0 * i / n) * kDegree;
        out.push_back(cx + d / 2 * std::cos(a));
        out.push_back(cy + d / 2 * std::sin(a));
    }
    return out;
}

void Rotate(Points& points, double degrees) {
    if (degrees == 0) {
        return;
    }
    double const c = std::cos(degrees * kDegree);
    double const s = std::sin(degrees * kDegree);
    for (std::size_t i = 0; i + 1 < points.size(); i += 2) {
        double const x = points[i];
        double const y = points[i + 1];
        points[i] = x * c - y * s;
        points[i + 1] = x * s + y * c;
    }
}

void Translate(Points& points, double dx, double dy) {
    for (std::size_t i = 0; i + 1 < points.size(); i += 2) {
        points[i] += dx;
        points[i + 1] += dy;
    }
}

Points WithHole(Points outline, double cx, double cy, double d) {
    if (d <= 0 || outline.size() < 6) {
        return outline;
    }
    if (!CounterClockwise(outline)) {
        Reverse(outline);
    }
    Points hole = Circle(cx, cy, d / 2);
    Reverse(hole);
    Points out = std::move(outline);
    double const x0 = out[0];
    double const y0 = out[1];
    out.push_back(x0);
    out.push_back(y0);
    out.insert(out.end(), hole.begin(), hole.end());
    out.push_back(hole[0]);
    out.push_back(hole[1]);
    return out;
}

Points Hull(Points const& points) {
    struct P {
        double x, y;
    };
    std::vector<P> p;
    for (std::size_t i = 0; i + 1 < points.size(); i += 2) {
        p.push_back({points[i], points[i + 1]});
    }
    std::sort(p.begin(), p.end(), [](P a, P b) { return a.x < b.x || (a.x == b.x && a.y < b.y); });
    if (p.size() < 3) {
        return points;
    }
    auto const cross = [](P o, P a, P b) {
        return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
    };
    std::vector<P> h(2 * p.size());
    std::size_t k = 0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        while (k >= 2 && cross(h[k - 2], h[k - 1], p[i]) <= 0) {
            --k;
        }
        h[k++] = p[i];
    }
    for (std::size_t i = p.size() - 1, t = k + 1; i > 0; --i) {
        while (k >= t && cross(h[k - 2], h[k - 1], p[i - 1]) <= 0) {
            --k;
        }
        h[k++] = p[i - 1];
    }
    Points out;
    for (std::size_t i = 0; i + 1 < k; ++i) {
        out.push_back(h[i].x);
        out.push_back(h[i].y);
    }
    return out;
}

bool CounterClockwise(Points const& points) {
    double area = 0;
    std::size_t const n = points.size() / 2;
    for (std::size_t i = 0; i < n; ++i) {
        std::size_t const j = (i + 1) % n;
        area += points[2 * i] * points[2 * j + 1] - points[2 * j] * points[2 * i + 1];
    }
    return area > 0;
}

void Reverse(Points& points) {
    std::size_t const n = points.size() / 2;
    for (std::size_t i = 0; i < n / 2; ++i) {
        std::swap(points[2 * i], points[2 * (n - 1 - i)]);
        std::swap(points[2 * i + 1], points[2 * (n - 1 - i) + 1]);
    }
}

} // namespace qzref::gerber
