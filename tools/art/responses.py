"""Magnitude responses of the filters that the pictures show, in dB.

`octave` is the distance from the filter's frequency in octaves. The analogue second-order prototypes are used.
"""

from math import log10


def _decibels(numerator, denominator, octave):
    """|H(jw)| of a ratio of polynomials (s^2, s, 1) at w = 2^octave."""
    s = complex(0.0, 2.0**octave)

    def value(polynomial):
        return polynomial[0] * s * s + polynomial[1] * s + polynomial[2]

    return 20.0 * log10(abs(value(numerator) / value(denominator)))


def bell(octave, gain, q):
    a = 10.0 ** (gain / 40.0)
    return _decibels((1.0, a / q, 1.0), (1.0, 1.0 / (a * q), 1.0), octave)


def low_shelf(octave, gain, q=0.707):
    a = 10.0 ** (gain / 40.0)
    root = a**0.5 / q
    return _decibels((a, a * root, a * a), (a, root, 1.0), octave)


def high_shelf(octave, gain, q=0.707):
    return low_shelf(-octave, gain, q)


def low_pass(octave, q=0.707):
    return _decibels((0.0, 0.0, 1.0), (1.0, 1.0 / q, 1.0), octave)


def high_pass(octave, q=0.707):
    return low_pass(-octave, q)
