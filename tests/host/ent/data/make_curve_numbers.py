#!/usr/bin/env python3
"""Measures curves with 40 digits, by the definitions and quadrature of curve_shapes.py.

Writes curve_numbers.txt, which accuracy_test.cpp reads: python3 make_curve_numbers.py > curve_numbers.txt
A curve's line tells its kind and data; the lines below tell what is true of it.
"""
from curve_shapes import (Tilt, arc, arcs_through, bulged, chain, circle, ellipse, fit, line, mpf, pi, show, smoothed,
                          spline, sqrt)

WILD = [(0, 0, 0.5), (4, 0, 0), (5, 3, -1.5), (5, 3, 1), (2, 4, 1e-7), (-1, 2, 0)]
SPACE = [(0, 0, 0), (2, 1, 0), (3, -1, 0.5), (5, 2, 1)]
FLAT = [(0, 0, 0), (2, 4, 0), (5, 4, 0), (6, -1, 0), (8, 2, 0)]
RING = [(2, 0, 0), (1, 2, 0), (-2, 1, 0), (-1, -2, 0)]


def conics():
    yield 'a circle', circle((1, 2, 0), 1.5)
    yield 'an arc over the X axis', arc((1, 1, 0), 2, 5.5, 1)
    yield 'a short arc', arc((0, 0, 0), 9, 1, 1.001)
    for name, ratio, start, end in (('an ellipse', 0.4, 0, 2 * pi), ('an arc of an ellipse', 0.4, 0.5, 4),
                                    ('a needle', 0.001, 0, 2 * pi), ('an ellipse begun elsewhere', 0.7, 2, 2 + 2 * pi)):
        yield name, ellipse((1, 0, 0), (3, 1, 0), ratio, start, end)
    for name, normal in (('tilted', (1, -2, 3)), ('from below', (0, 0, -1)), ('nearly flat', (0.01, 0.015, 1)),
                         ('upright', (-2, 1, 0))):
        tilt = Tilt(normal)
        yield 'a circle, ' + name, circle((1, 2, 0.5), 1.5, tilt)
        yield 'an arc, ' + name, arc((1, 1, -0.5), 2, 5.5, 1, tilt)
        yield 'an ellipse, ' + name, ellipse((1, 0, 2), (3, 1, 0), 0.4, 0.5, 4, tilt)


def polylines():
    yield 'an open polyline with a doubled vertex', bulged(WILD, False)
    yield 'a closed polyline', bulged(WILD[:3] + WILD[4:], True)
    yield 'a disc of two arcs', bulged([(1.8, 2.4, -1), (-1.8, -2.4, -1)], True)
    yield 'a nearly full turn', bulged([(0, 0, 12), (0.25, 0, 0), (3, 0, 0)], False)
    yield 'a tilted polyline', bulged(WILD[:3] + WILD[4:], True, tilt=Tilt((1, 2, 3)), elevation=0.75)
    yield 'a polyline seen from below', bulged(WILD[:3] + WILD[4:], False, tilt=Tilt((0, 0, -1)), elevation=-2)
    yield 'a chain in space', chain(SPACE, False)
    yield 'a closed chain in space', chain(SPACE, True)
    corners = [(x, y) for x, y, _ in FLAT]
    yield 'arcs through points', arcs_through(corners, False)
    yield 'arcs through points, closed', arcs_through(corners, True)
    for degree, word in ((2, 'quadratic'), (3, 'cubic')):
        for closed in (False, True):
            yield word + ' smoothing' + closed * ', closed', smoothed(FLAT, degree, closed, 'smooth2d')
            yield word + ' smoothing in space' + closed * ', closed', smoothed(SPACE, degree, closed, 'smooth3d')


def splines():
    yield 'a cubic spline', spline(3, FLAT, (0, 0, 0, 0, 0.37, 1, 1, 1, 1))
    yield 'a spline with a corner', spline(2, FLAT, (0, 0, 0, 1, 1, 3, 3, 3))
    yield 'a rational spline', spline(2, FLAT[:4], (0, 0, 0, 1, 2, 2, 2), (1, 2, 0.5, 1))
    yield 'a spline with nearly equal knots', spline(3, FLAT + [(9, 0, 0)], (0, 0, 0, 0, 1, 1.001, 2, 2, 2, 2))
    yield 'a spline in space', spline(4, [(0, 0, 0), (1, 3, 2), (4, 1, -3), (6, 2, 5), (7, -2, 1), (9, 0, 0)],
                                      (0, 0, 0, 0, 0, 2, 3, 3, 3, 3, 3))
    yield 'a spline without clamped ends', spline(3, FLAT + [(9, 0, 0)], range(10))
    yield 'a spline that goes round', spline(3, RING + RING[:3], range(11))
    yield 'a periodic spline', spline(3, RING + RING[:3], range(11), periodic=True)
    yield 'a periodic spline of uneven knots', spline(2, RING + RING[:2], (-3, -1, 0, 1.5, 2, 4, 5, 6.5, 7),
                                                      periodic=True)
    root = sqrt(mpf(1) / 2)
    square = [(3, 0, 0), (3, 3, 0), (0, 3, 0), (-3, 3, 0), (-3, 0, 0), (-3, -3, 0), (0, -3, 0), (3, -3, 0), (3, 0, 0)]
    yield 'a rational circle', spline(2, square, (0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4), [1, root] * 4 + [1])
    weights = (1, 3, 0.4, 2)
    yield 'a rational periodic spline', spline(3, RING + RING[:3], range(11), weights + weights[:3], periodic=True)
    yield 'a helix', spline(3, [(1, 0, 0), (1, 0.6, 0.1), (0.6, 1, 0.2), (0, 1, 0.3), (-0.6, 1, 0.4), (-1, 0.6, 0.5),
                                (-1, 0, 0.6)], (0, 0, 0, 0, 1, 1, 1, 2, 2, 2, 2), kind='helix')
    yield 'a spline through points', fit(FLAT)
    yield 'a spline through points of space', fit(SPACE + [(4, 4, -2), (0, 5, 3)])
    yield 'a spline through points along tangents', fit(SPACE, ((0, 2, 1), (1, 1, -3)))
    yield 'a spline through two points', fit(SPACE[:2], ((0, 1, 0), (0, 1, 1)))
    yield 'a ring through points', fit(RING, periodic=True)
    yield 'a ring through points of space', fit(SPACE + [(4, 4, -2), (0, 5, 3)], periodic=True)


def main():
    print('# Made by make_curve_numbers.py: curves, and what is true of them.')
    for name, curve in [('a line', line((1, 2, 3), (4, -2, 15))), *conics(), *polylines(), *splines()]:
        low, high = curve.pieces[0][0], curve.pieces[-1][1]
        print('curve %s\n%s' % (name, curve.text))
        print('length', show([curve.length()]))
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
