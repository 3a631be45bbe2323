"""Curves by their definitions, with 40 digits: their pieces, and what can be measured of these.

Shares nothing with the program. make_curve_numbers.py tells which curves are measured.
"""
from mpmath import mp, mpf, mpmathify, atan, atan2, cos, findroot, lu_solve, matrix, pi, quad, sin, sqrt, tan

mp.dps = 40


class Curve:
    """Smooth pieces: (from, to, derivatives), derivatives(t) gives point, first and second derivative."""

    def __init__(self, text, pieces, plane=False):
        self.text, self.pieces, self.plane = text, pieces, plane

    def tilted(self, tilt):
        """The same seen in another plane: every point, derivative and so on goes through its axes."""
        def turned(f):
            return lambda t: tuple(tilt.world(v) for v in f(t))
        self.pieces = [(low, high, turned(f)) for low, high, f in self.pieces]
        return self

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
        """With the chord that closes it, as half the integral of P x dP in every coordinate plane."""
        first, last = self.pieces[0], self.pieces[-1]
        a, b = last[2](last[1])[0], first[2](first[0])[0]
        total = mpf(0)
        for i, j in ((0, 1), (1, 2), (2, 0)):
            part = (a[i] * b[j] - a[j] * b[i]) / 2
            for low, high, f in self.pieces:
                def ring(t):
                    p, d, _ = f(t)
                    return (p[i] * d[j] - p[j] * d[i]) / 2
                part += quad(ring, [low + (high - low) * k / 6 for k in range(7)])
            total += part * part
        return sqrt(total)

    def best(self, value, slope):
        """The least value over the curve, and where: stationary places and ends of pieces."""
        places = []
        for low, high, f in self.pieces:
            steps = 60
            params = [low + (high - low) * mpf(i) / steps for i in range(steps + 1)]
            slopes = [slope(f(t)) for t in params]
            places += [(value(f(t)), t) for t, s in zip(params, slopes) if s == 0 or t in (params[0], params[-1])]
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


def cross(a, b):
    return [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]]


class Tilt:
    """The plane through the origin with a normal, its axes by the arbitrary axis rule of drawing files."""

    def __init__(self, normal):
        n = [mpf(c) for c in normal]
        length = sqrt(sum(c * c for c in n))
        self.z = [c / length for c in n]
        near = abs(self.z[0]) < mpf(1) / 64 and abs(self.z[1]) < mpf(1) / 64
        x = cross([0, 1, 0] if near else [0, 0, 1], self.z)
        length = sqrt(sum(c * c for c in x))
        self.x = [c / length for c in x]
        self.y = cross(self.z, self.x)

    def world(self, v):
        return [sum(mpf(c) * axis[k] for c, axis in zip(v, (self.x, self.y, self.z))) for k in range(3)]


FLAT = Tilt((0, 0, 1))


def circle(center, radius, tilt=FLAT):
    o = tilt.world(center)
    return conic('circle', o, tilt.world((radius, 0, 0)), tilt.world((0, radius, 0)), 0, 2 * pi,
                 o + tilt.z + [radius])


def arc(center, radius, start, end, tilt=FLAT):
    o = tilt.world(center)
    return conic('arc', o, tilt.world((radius, 0, 0)), tilt.world((0, radius, 0)), start,
                 end if end > start else end + 2 * pi, o + tilt.z + [radius, start, end])


def ellipse(center, major, ratio, start=0, end=2 * pi, tilt=FLAT):
    o, u = tilt.world(center), tilt.world(major)
    v = [mpf(ratio) * c for c in cross(tilt.z, u)]
    return conic('ellipse', o, u, v, start, end, o + tilt.z + u + [ratio, start, end])


def conic(kind, center, u, v, start, end, data):
    center, u, v = ([mpf(x) for x in w] for w in (center, u, v))

    def f(t):
        c, s = cos(t), sin(t)
        return ([o + c * x + s * y for o, x, y in zip(center, u, v)], [c * y - s * x for x, y in zip(u, v)],
                [-c * x - s * y for x, y in zip(u, v)])
    # In quarters, so that the sharp bends of flat ellipses are at the ends of the quadrature.
    start, end, cuts = mpf(start), mpf(end), [mpf(start)]
    cuts += [k * pi / 2 for k in range(-8, 16) if start < k * pi / 2 < end] + [end]
    return Curve(kind + ' ' + show(data), [(a, b, f) for a, b in zip(cuts, cuts[1:])], True)


def bulged(vertices, closed, text=None, tilt=FLAT, elevation=0):
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
    text = text or 'polyline %d ' % closed + show(tilt.z + [elevation] + [c for v in vertices for c in v])
    raised = [(low, high, lambda t, f=f: (f(t)[0][:2] + [mpf(elevation)],) + f(t)[1:]) for low, high, f in pieces]
    return Curve(text, raised, True).tilted(tilt)


def chain(points, closed, text=None, plane=False):
    points = [[mpf(c) for c in p] for p in points]
    pieces = []
    for i in range(len(points) if closed else len(points) - 1):
        a, b = points[i], points[(i + 1) % len(points)]
        d = [y - x for x, y in zip(a, b)]
        pieces.append((mpf(i), mpf(i + 1),
                       lambda t, i=i, a=a, d=d: ([x + (t - i) * y for x, y in zip(a, d)], d, [mpf(0)] * 3)))
    return Curve(text or 'chain %d ' % closed + flat(points), pieces, plane)


def flat(points):
    return show([c for p in points for c in p])


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


def spline(degree, poles, knots, weights=None, periodic=False, kind='spline'):
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
    text = '%s %d %d %d %d ' % (kind, degree, bool(weights), periodic, len(poles))
    text += show([c for p in poles for c in p] + knots + (w if weights else []))
    return Curve(text, pieces, all(p[2] == 0 for p in poles))


def fit(points, ends=None, periodic=False):
    """The cubic spline through points at the lengths of its chords, by its second derivatives (moments)."""
    at = [[mpf(c) for c in p] for p in points] + ([[mpf(c) for c in points[0]]] if periodic else [])
    step = [sqrt(sum((b - a) ** 2 for a, b in zip(p, q))) for p, q in zip(at, at[1:])]
    n, unknown = len(step), len(step) if periodic else len(step) + 1
    m, right = matrix(unknown, unknown), matrix(unknown, 3)
    slope = [[(b - a) / h for a, b in zip(p, q)] for p, q, h in zip(at, at[1:], step)]
    for i in range(0 if periodic else 1, n):
        for k, share in ((i - 1, step[i - 1]), (i, 2 * (step[i - 1] + step[i])), (i + 1, step[i])):
            m[i, k % unknown] += share
        for c in range(3):
            right[i, c] = 6 * (slope[i][c] - slope[i - 1][c])
    if not periodic:
        for row, other, k, sign in ((0, 1, 0, 1), (n, n - 1, n - 1, -1)):
            m[row, row] = 2
            if ends:  # directions, at the speed of the neighbouring chord
                m[row, other] = 1
                size = sqrt(sum(mpf(c) ** 2 for c in ends[row > 0]))
                for c in range(3):
                    right[row, c] = sign * 6 / step[k] * (slope[k][c] - mpf(ends[row > 0][c]) / size)
    moments = [[lu_solve(m, right[:, c])[i % unknown] for i in range(n + 1)] for c in range(3)]
    pieces, start = [], mpf(0)
    for i, h in enumerate(step):
        def f(t, i=i, h=h, start=start):
            a, b, out = start + h - t, t - start, ([], [], [])
            for c in range(3):
                p, q, low, high = at[i][c], at[i + 1][c], moments[c][i], moments[c][i + 1]
                out[0].append((low * a ** 3 + high * b ** 3) / (6 * h) + (p / h - low * h / 6) * a +
                              (q / h - high * h / 6) * b)
                out[1].append((high * b ** 2 - low * a ** 2) / (2 * h) + (q - p) / h - (high - low) * h / 6)
                out[2].append((low * a + high * b) / h)
            return out
        pieces.append((start, start + h, f))
        start += h
    given = [c for v in ends or [] for c in v]
    kind = 'round' if periodic else 'tangents' if ends else 'fit'
    return Curve(kind + ' ' + show(given + [c for p in points for c in p]), pieces,
                 all(p[2] == 0 for p in list(points) + list(ends or [])))


def smoothed(points, degree, closed, text, steps=8):
    """Places of the uniform B-spline over a frame, as many a side of it, joined by straight pieces."""
    n = len(points)
    if closed:  # the basis function of a frame point is centred on its number
        def weight(x):
            x = abs(x)
            if degree == 2:
                return mpf(3) / 4 - x * x if x <= 0.5 else (mpf(3) / 2 - x) ** 2 / 2 if x < 1.5 else mpf(0)
            return mpf(2) / 3 - x * x + x ** 3 / 2 if x <= 1 else (2 - x) ** 3 / 6 if x < 2 else mpf(0)
        places = [[sum(weight(mpf(k) / steps - i) * mpf(points[i % n][c]) for i in range(-3, n + 4)) for c in range(3)]
                  for k in range(n * steps)]
    else:
        spans = n - degree
        whole = spline(degree, points, [min(max(i, 0), spans) for i in range(-degree, spans + degree + 1)])
        count = (n - 1) * steps
        places = [whole.at(mpf(spans) * k / count)[0] for k in range(count + 1)]
    return chain(places, closed, '%s %d %d ' % (text, degree, closed) + flat(points), text == 'smooth2d')


def arcs_through(points, closed):
    """Pairs of arcs through the points: the tangent there is that of the circle through the neighbours."""
    p = [(mpf(x), mpf(y)) for x, y in points]
    n = len(p)

    def turn(u, v):
        return atan2(u[0] * v[1] - u[1] * v[0], u[0] * v[0] + u[1] * v[1])

    def way(a, b):
        return (b[0] - a[0], b[1] - a[1])

    def direction(a, b, c):
        # Between chord and tangent there is the angle over the chord at the third point.
        angle, (x, y) = turn(way(c, a), way(c, b)), way(a, b)
        length = sqrt(x * x + y * y)
        return ((x * cos(angle) - y * sin(angle)) / length, (x * sin(angle) + y * cos(angle)) / length)
    inner = range(n) if closed else range(1, n - 1)
    tangents = {i: direction(p[i - 1], p[i], p[(i + 1) % n]) for i in inner}

    def mirrored(t, chord):  # an arc's other tangent
        share = 2 * (t[0] * chord[0] + t[1] * chord[1]) / (chord[0] ** 2 + chord[1] ** 2)
        return (share * chord[0] - t[0], share * chord[1] - t[1])
    if not closed:
        tangents[0] = mirrored(tangents[1], way(p[0], p[1]))
        tangents[n - 1] = mirrored(tangents[n - 2], way(p[n - 2], p[n - 1]))
    vertices = []
    for i in range(n if closed else n - 1):
        a, b, s, t = p[i], p[(i + 1) % n], tangents[i], tangents[(i + 1) % n]
        v = way(a, b)
        square = 2 * (1 - s[0] * t[0] - s[1] * t[1])
        half, rest = v[0] * (s[0] + t[0]) + v[1] * (s[1] + t[1]), v[0] ** 2 + v[1] ** 2
        if square < mpf(10) ** -30:  # one arc
            vertices.append(a + (tan(turn(s, v) / 2),))
            continue
        d = (sqrt(half * half + square * rest) - half) / square
        joint = tuple((a[k] + b[k] + d * (s[k] - t[k])) / 2 for k in (0, 1))
        vertices.append(a + (tan(turn(s, way(a, joint)) / 2),))
        vertices.append(joint + (tan(turn(way(joint, b), t) / 2),))
    if not closed:
        vertices.append(p[-1] + (mpf(0),))
    return bulged(vertices, closed, 'arcs %d ' % closed + show([c for q in points for c in q]))
