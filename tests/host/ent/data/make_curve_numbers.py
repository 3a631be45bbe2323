#!/usr/bin/env python3
"""Measures curves with 40 digits, by definitions and quadrature that share nothing with the program.

Writes curve_numbers.txt, which accuracy_test.cpp reads: python3 make_curve_numbers.py > curve_numbers.txt
A curve's line tells its kind and data; the lines below tell what is true of it.
"""
from mpmath import mp, mpf, mpmathify, cos, sin, pi, quad, sqrt, atan, findroot

mp.dps = 40


class Curve:
    """Smooth pieces: (from, to, derivatives), derivatives(t) gives point, first and second derivative."""

    def __init__(self, text, pieces, plane=False):
        self.text, self.pieces, self.plane = text, pieces, plane

    def at(self, t):
        for low, high, f in self.pieces:
            if low <= t < high:
                return f(t)
        return self.pieces[-1][2](t)

    def speed(self, f):
        return lambda t: sqrt(sum(c * c for c in f(t)[1]))

    def length(self, to=None):
        total = mpf(0)
        for low, high, f in self.pieces:
            end = high if to is None else min(high, to)
            if end > low:
                total += quad(self.speed(f), [low + (end - low) * i / 6 for i in range(7)])
        return total

    def area(self):
        total = mpf(0)
        for low, high, f in self.pieces:
            def ring(t):
                p, d, _ = f(t)
                return (p[0] * d[1] - p[1] * d[0]) / 2
            total += quad(ring, [low + (high - low) * i / 6 for i in range(7)])
        a, b = self.pieces[-1][2](self.pieces[-1][1])[0], self.pieces[0][2](self.pieces[0][0])[0]
        return abs(total + (a[0] * b[1] - a[1] * b[0]) / 2)

    def best(self, value, slope):
        """The least value over the curve, and where: stationary places and ends of pieces."""
        places = []
        for low, high, f in self.pieces:
            steps = 60
            params = [low + (high - low) * mpf(i) / steps for i in range(steps + 1)]
            slopes = [slope(f(t)) for t in params]
            places += [(value(f(t)), t) for t, s in zip(params, slopes) if s == 0 or t in (low, high)]
            for i in range(steps):
                if slopes[i] * slopes[i + 1] < 0:
                    t = findroot(lambda u: slope(f(u)), (params[i], params[i + 1]), solver='anderson')
                    places.append((value(f(t)), t))
        return min(places, key=lambda place: place[0])

    def closest(self, q):
        def square(p):
            return sum((a - b) ** 2 for a, b in zip(p[0], q))
        def slope(p):
            return sum((a - b) * c for a, b, c in zip(p[0], q, p[1]))
        return self.at(self.best(square, slope)[1])[0]

    def extreme(self, axis, sign):
        return sign * self.best(lambda p: sign * p[0][axis], lambda p: p[1][axis])[0]


def show(values):
    return ' '.join(mp.nstr(mpmathify(v), 20, strip_zeros=True) for v in values)


def line(a, b):
    a, b = [mpf(x) for x in a], [mpf(x) for x in b]
    length = sqrt(sum((y - x) ** 2 for x, y in zip(a, b)))
    d = [(y - x) / length for x, y in zip(a, b)]
    return Curve('line ' + show(a + b),
                 [(mpf(0), length, lambda t: ([x + t * y for x, y in zip(a, d)], d, [mpf(0)] * 3))])


def conic(kind, center, u, v, start, end, data, plane):
    center, u, v = ([mpf(x) for x in w] for w in (center, u, v))

    def f(t):
        c, s = cos(t), sin(t)
        return ([o + c * x + s * y for o, x, y in zip(center, u, v)], [c * y - s * x for x, y in zip(u, v)],
                [-c * x - s * y for x, y in zip(u, v)])
    # In quarters, so that the sharp bends of flat ellipses are at the ends of the quadrature.
    start, end, cuts = mpf(start), mpf(end), [mpf(start)]
    cuts += [k * pi / 2 for k in range(-8, 16) if start < k * pi / 2 < end] + [end]
    return Curve(kind + ' ' + show(data), [(a, b, f) for a, b in zip(cuts, cuts[1:])], plane)


def bulged(vertices, closed):
    pieces = []
    n = len(vertices)
    for i in range(n if closed else n - 1):
        (x0, y0, b), (x1, y1, _) = [tuple(mpf(c) for c in vertices[k % n]) for k in (i, i + 1)]
        if x0 == x1 and y0 == y1:
            pieces.append((mpf(i), mpf(i + 1), lambda t, p=[x0, y0, mpf(0)]: (p, [mpf(0)] * 3, [mpf(0)] * 3)))
        elif b == 0:
            d = [x1 - x0, y1 - y0, mpf(0)]
            pieces.append((mpf(i), mpf(i + 1), lambda t, i=i, x0=x0, y0=y0, d=d: (
                [x0 + (t - i) * d[0], y0 + (t - i) * d[1], mpf(0)], d, [mpf(0)] * 3)))
        else:
            sweep, k = 4 * atan(b), (1 - b * b) / (4 * b)
            cx, cy = (x0 + x1) / 2 - (y1 - y0) * k, (y0 + y1) / 2 + (x1 - x0) * k

            def arc(t, i=i, x0=x0, y0=y0, cx=cx, cy=cy, w=sweep):
                a = w * (t - i)
                c, s, rx, ry = cos(a), sin(a), x0 - cx, y0 - cy
                px, py = c * rx - s * ry, s * rx + c * ry
                return [cx + px, cy + py, mpf(0)], [-w * py, w * px, mpf(0)], [-w * w * px, -w * w * py, mpf(0)]
            pieces.append((mpf(i), mpf(i + 1), arc))
    flat = [c for v in vertices for c in v]
    return Curve('polyline %d %d ' % (closed, n) + show(flat), pieces, True)


def chain(points, closed):
    points = [[mpf(c) for c in p] for p in points]
    pieces = []
    for i in range(len(points) if closed else len(points) - 1):
        a, b = points[i], points[(i + 1) % len(points)]
        d = [y - x for x, y in zip(a, b)]
        pieces.append((mpf(i), mpf(i + 1),
                       lambda t, i=i, a=a, d=d: ([x + (t - i) * y for x, y in zip(a, d)], d, [mpf(0)] * 3)))
    return Curve('chain %d %d ' % (closed, len(points)) + show([c for p in points for c in p]), pieces)


def basis(knots, i, p, t, span, order):
    """Derivative of the B-spline by its recursion; t counts to the span given, as its closure does."""
    if order > 0:
        total = mpf(0)
        for k, sign in ((i, 1), (i + 1, -1)):
            width = knots[k + p] - knots[k]
            if width > 0:
                total += sign * p / width * basis(knots, k, p - 1, t, span, order - 1)
        return total
    if p == 0:
        return mpf(1) if i == span else mpf(0)
    total = mpf(0)
    if knots[i + p] > knots[i]:
        total += (t - knots[i]) / (knots[i + p] - knots[i]) * basis(knots, i, p - 1, t, span, 0)
    if knots[i + p + 1] > knots[i + 1]:
        total += (knots[i + p + 1] - t) / (knots[i + p + 1] - knots[i + 1]) * basis(knots, i + 1, p - 1, t, span, 0)
    return total


def spline(degree, poles, knots, weights=None):
    knots = [mpf(k) for k in knots]
    poles = [[mpf(c) for c in p] for p in poles]
    w = [mpf(x) for x in weights] if weights else [mpf(1)] * len(poles)
    pieces = []
    for span in range(degree, len(poles)):
        if knots[span + 1] > knots[span]:
            def f(t, span=span):
                h = []
                for order in range(3):
                    n = {i: basis(knots, i, degree, t, span, order) for i in range(span - degree, span + 1)}
                    h.append([sum(n[i] * w[i] * poles[i][c] for i in n) for c in range(3)] +
                             [sum(n[i] * w[i] for i in n)])
                p = [c / h[0][3] for c in h[0][:3]]
                d = [(h[1][c] - h[1][3] * p[c]) / h[0][3] for c in range(3)]
                dd = [(h[2][c] - 2 * h[1][3] * d[c] - h[2][3] * p[c]) / h[0][3] for c in range(3)]
                return p, d, dd
            pieces.append((knots[span], knots[span + 1], f))
    text = 'spline %d %d %d ' % (degree, bool(weights), len(poles))
    text += show([c for p in poles for c in p] + knots + (w if weights else []))
    return Curve(text, pieces, all(p[2] == 0 for p in poles))


def curves():
    yield 'a line', line((1, 2, 3), (4, -2, 15))
    yield 'a circle', conic('circle', (1, 2, 0), (1.5, 0, 0), (0, 1.5, 0), 0, 2 * pi, (1, 2, 0, 1.5), True)
    yield 'an arc over the X axis', conic('arc', (1, 1, 0), (2, 0, 0), (0, 2, 0), 5.5, 1 + 2 * pi,
                                          (1, 1, 0, 2, 5.5, 1), True)
    yield 'a short arc', conic('arc', (0, 0, 0), (9, 0, 0), (0, 9, 0), 1, 1.001, (0, 0, 0, 9, 1, 1.001), True)
    for name, ratio, start, end in (('an ellipse', 0.4, 0, 2 * pi), ('an arc of an ellipse', 0.4, 0.5, 4),
                                    ('a needle', 0.001, 0, 2 * pi), ('an ellipse begun elsewhere', 0.7, 2, 2 + 2 * pi)):
        yield name, conic('ellipse', (1, 0, 0), (3, 1, 0), (-mpf(ratio), 3 * mpf(ratio), 0), start, end,
                          (1, 0, 0, 3, 1, 0, ratio, start, end), True)
    wild = [(0, 0, 0.5), (4, 0, 0), (5, 3, -1.5), (5, 3, 1), (2, 4, 1e-7), (-1, 2, 0)]
    yield 'an open polyline with a doubled vertex', bulged(wild, False)
    yield 'a closed polyline', bulged(wild[:3] + wild[4:], True)
    yield 'a disc of two arcs', bulged([(1.8, 2.4, -1), (-1.8, -2.4, -1)], True)
    yield 'a nearly full turn', bulged([(0, 0, 12), (0.25, 0, 0), (3, 0, 0)], False)
    space = [(0, 0, 0), (2, 1, 0), (3, -1, 0.5), (5, 2, 1)]
    yield 'a chain in space', chain(space, False)
    yield 'a closed chain in space', chain(space, True)
    flat = [(0, 0, 0), (2, 4, 0), (5, 4, 0), (6, -1, 0), (8, 2, 0)]
    yield 'a cubic spline', spline(3, flat, (0, 0, 0, 0, 0.37, 1, 1, 1, 1))
    yield 'a spline with a corner', spline(2, flat, (0, 0, 0, 1, 1, 3, 3, 3))
    yield 'a rational spline', spline(2, flat[:4], (0, 0, 0, 1, 2, 2, 2), (1, 2, 0.5, 1))
    yield 'a spline with nearly equal knots', spline(3, flat + [(9, 0, 0)], (0, 0, 0, 0, 1, 1.001, 2, 2, 2, 2))
    yield 'a spline in space', spline(4, [(0, 0, 0), (1, 3, 2), (4, 1, -3), (6, 2, 5), (7, -2, 1), (9, 0, 0)],
                                      (0, 0, 0, 0, 0, 2, 3, 3, 3, 3, 3))
    yield 'a spline without clamped ends', spline(3, flat + [(9, 0, 0)], range(10))
    ring = [(2, 0, 0), (1, 2, 0), (-2, 1, 0), (-1, -2, 0)]
    yield 'a spline that goes round', spline(3, ring + ring[:3], range(11))


def main():
    print('# Made by make_curve_numbers.py: curves, and what is true of them.')
    for name, curve in curves():
        low, high = curve.pieces[0][0], curve.pieces[-1][1]
        length = curve.length()
        print('curve %s\n%s' % (name, curve.text))
        print('length', show([length]))
        if curve.plane:
            print('area', show([curve.area()]))
        print('box', show([curve.extreme(a, 1) for a in range(3)] + [curve.extreme(a, -1) for a in range(3)]))
        for share in ('0.031', '0.29', '0.613', '0.947'):
            t = low + (high - low) * mpf(share)
            p, d, dd = curve.at(t)
            if any(d):
                print('at', show([t, curve.length(t)] + list(p) + list(d) + list(dd)))
        for q in ((2.1, 1.3, 0.4), (-3, 5, 1), (11, -4, -2)):
            print('closest', show(q), show(curve.closest([mpf(c) for c in q])))


main()
