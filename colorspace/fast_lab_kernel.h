/// @file
/// XYZ to Lab in vectors of the instruction set whose lanes are declared before; included by one source file
/// for each. Nothing but this is to be compiled there: the linker would be free to use functions that other
/// files need too in the form that not every processor runs. Internal.
#pragma once

#include "colorspace/fast_lab.h"
#include "colorspace/lab_formulas.h"

// How t^e is found with the bits that `pow` gives.
//
// 1. The bits of t as an integer are near a line in log2 t, so that those of a first z near t^(-1/3) are a
//    constant less a third of them. With p = t z^3, between 0.667 and 0.791, z P(p) is t^(-1/3) within
//    2.7e-5, where P is the quadratic that is nearest to p^(-1/3).
// 2. y = t z^2 (1 - h)^(-2/3) with h = 1 - t z^3 is the cube root within two units in the last place.
// 3. With y^2 = q + l exactly (l by a fused operation), t - q y and t - q y - l y are exact but for a last
//    rounding far below what matters, and (t - y^3) z^2 / 3 is what is missing of the cube root within
//    2^-13 units of y's last place.
// 4. The exponents e are not 1/3: t^e = t^(1/3) (1 + (e - 1/3) ln t + ...). What is left out is below 2^-40
//    of the result in single precision (|ln t| < 89, e - 1/3 = 9.9e-9) and 2^-77 in double (710, -3.3e-15).
//    ln t comes from the bits of t and a polynomial in its mantissa.
// 5. s = y + c is rounded once, and d = c - (s - y) is what was rounded away, exactly. Where d, made larger
//    by kDoubt, would round s elsewhere, the value is too near to the middle of two numbers, and `pow`
//    decides. So do NaN and infinity, of which d is not a number.
//
// Single precision: the errors of 3 and 4 sum up to less than 2^-12 units in the last place; kDoubt keeps
// twice that, 2^-11, from the middle, where `pow`, right within 2^-28 such units, rounds to the same float.
// That is proved for every float by walking through all of them (tests/exhaustive).
//
// Double precision: they are below 0.003 units; kDoubt keeps 0.032 from the middle, where every `pow` that
// errs by less than 0.529 units gives the same double. Of the GNU C library, which states 0.52 to 0.54 for
// all arguments together, 0.508 was the most in sixty million values.
namespace qxcms::detail {

namespace {

constexpr std::size_t kFloats = kLaneBytes / sizeof(float);
constexpr std::size_t kDoubles = kLaneBytes / sizeof(double);

using HalfFloats = float __attribute__((vector_size(kLaneBytes / 2)));
using Ints = std::int32_t __attribute__((vector_size(kLaneBytes)));
using Longs = std::uint64_t __attribute__((vector_size(kLaneBytes)));

template <class Vector, class Number>
inline Vector load(const Number* from) {
    Vector vector;
    __builtin_memcpy(&vector, from, sizeof vector);
    return vector;
}

template <class Vector, class Number>
inline void store(Vector vector, Number* to) {
    __builtin_memcpy(to, &vector, sizeof vector);
}

template <class Vector, class Number>
inline Vector all(Number value) {
    return value - Vector{};
}

/// Single precision, exponent 0.3333333432674408.
struct Single {
    using Number = float;
    using Vector = Floats;
    /// As many as there are doubles.
    using Part = HalfFloats;

    static constexpr float kMore = 9.9341e-9F * 0.69314718F; // (e - 1/3) ln 2
    static constexpr float kDoubt = 1.001F;
    static constexpr float kUnit = 1.0F / 8388608.0F; // of bitsAsNumber, in octaves
    static constexpr float kBias = 127.0F;

    /// The threshold is below the float that is nearest to it.
    static auto isLinear(Vector t) { return t < static_cast<float>(kForwardThreshold); }
    static_assert(static_cast<double>(static_cast<float>(kForwardThreshold)) > kForwardThreshold);

    static Vector bitsAsNumber(Vector t) {
        return __builtin_convertvector(reinterpret_cast<Ints>(t), Vector);
    }
    static Vector fromBits(Vector number) {
        return reinterpret_cast<Vector>(__builtin_convertvector(number, Ints));
    }
    /// t / 2^n, from 1 to 2.
    static Vector mantissa(Vector t) {
        return reinterpret_cast<Vector>((reinterpret_cast<Ints>(t) & 0x007FFFFF) | 0x3F800000);
    }
    /// log2 m - (m - 1) within 6.4e-4, less kBias.
    static Vector logarithm(Vector m) {
        Vector sum = fused(m, all<Vector>(0.1582487F), all<Vector>(-1.0518750F));
        sum = fused(sum, m, all<Vector>(2.0478842F));
        return fused(sum, m, all<Vector>(-1.1536207F - kBias));
    }
    /// ((1 - h)^(-2/3) - 1) / h for |h| < 1e-4.
    static Vector growth(Vector) { return all<Vector>(0.66666667F); }
};

/// Double precision, exponent 0.33333333333333.
struct Exact {
    using Number = double;
    using Vector = Doubles;
    using Part = Doubles;

    static constexpr double kMore = -3.349172791e-15 * 0.6931471805599453;
    static constexpr double kDoubt = 1.07;
    static constexpr double kUnit = 1.0 / 1099511627776.0;
    static constexpr double kBias = 1023.0;
    static constexpr double kTwoTo52 = 4503599627370496.0;

    static auto isLinear(Vector t) { return t <= kForwardThreshold; }

    // The upper 52 bits, as the mantissa of a number from 2^52 to 2^53.
    static Vector bitsAsNumber(Vector t) {
        return reinterpret_cast<Vector>((reinterpret_cast<Longs>(t) >> 12) | 0x4330000000000000U) - kTwoTo52;
    }
    static Vector fromBits(Vector number) {
        return reinterpret_cast<Vector>(reinterpret_cast<Longs>(number + kTwoTo52) << 12);
    }
    static Vector mantissa(Vector t) {
        return reinterpret_cast<Vector>((reinterpret_cast<Longs>(t) & 0x000FFFFFFFFFFFFFU) |
                                        0x3FF0000000000000U);
    }
    /// log2 m - (m - 1) within 8.8e-5, less kBias.
    static Vector logarithm(Vector m) {
        Vector sum = fused(m, all<Vector>(-0.0816158124), all<Vector>(0.6451423871));
        sum = fused(sum, m, all<Vector>(-2.1206751829));
        sum = fused(sum, m, all<Vector>(3.0700908417));
        return fused(sum, m, all<Vector>(-1.5128546416 - kBias));
    }
    static Vector growth(Vector h) {
        return fused(fused(h, all<Vector>(40.0 / 81.0), all<Vector>(5.0 / 9.0)), h, all<Vector>(2.0 / 3.0));
    }
};

/// What t^e is before the last rounding: nearest + rest, |rest| at most a few units in the last place.
template <class Vector>
struct Power {
    Vector nearest;
    Vector rest;
};

template <class Form, class Vector = typename Form::Vector, class Number = typename Form::Number>
inline Power<Vector> power(Vector t) {
    constexpr Number kThird = Number{1} / Number{3};
    constexpr Number kStart = (Form::kBias * 4 / 3 - Number{0.222F}) / Form::kUnit;
    const Vector bits = Form::bitsAsNumber(t);
    Vector z = Form::fromBits(fused(bits, all<Vector>(-kThird), all<Vector>(kStart)));
    const Vector p = z * z * z * t;
    z *= fused(fused(p, all<Vector>(Number{0.46722521F}), all<Vector>(Number{-1.1906907F})), p,
               all<Vector>(Number{1.7308204F}));
    const Vector square = z * z;
    const Vector first = t * square;
    const Vector h = fused(-first, z, all<Vector>(Number{1}));
    const Vector y = fused(first * h, Form::growth(h), first);
    const Vector q = y * y;
    const Vector l = fused(y, y, -q);
    const Vector missing = fused(-l, y, fused(-q, y, t));
    const Vector log2 = fused(bits, all<Vector>(Form::kUnit), Form::logarithm(Form::mantissa(t)));
    return {y, fused(missing, square * kThird, y * (log2 * Form::kMore))};
}

/// f of the ratios: t * 7.787079 + 0.137931 up to the threshold, else t^e.
template <class Form>
inline void rootsOf(const typename Form::Number* ratios, std::size_t count, typename Form::Number* roots,
                    std::uint64_t* doubtful) {
    using Number = typename Form::Number;
    using Vector = typename Form::Vector;
    constexpr std::size_t kLanes = sizeof(Vector) / sizeof(Number);
    for (std::size_t block = 0; block < count; block += 64) {
        std::uint64_t doubts = 0;
        const std::size_t last = count - block < 64 ? count - block : 64;
        for (std::size_t i = 0; i < last; i += kLanes) {
            const Vector ratio = load<Vector>(ratios + block + i);
            const auto linear = Form::isLinear(ratio);
            const auto [y, c] = power<Form>(linear ? all<Vector>(Number{1}) : ratio);
            const Vector root = y + c;
            const Vector lost = c - (root - y);
            const auto sure = fused(lost, all<Vector>(Form::kDoubt), root) == root;
            doubts |= signsOf(reinterpret_cast<Vector>(~sure)) << i;
            const Vector line =
                ratio * static_cast<Number>(kForwardSlope) + static_cast<Number>(kForwardOffset);
            store(linear ? line : root, roots + block + i);
        }
        doubtful[block / 64] = doubts;
    }
}

/// 0 for negative components, else ratio(component, component of the white).
template <class Form, class Ratio>
inline void ratiosOf(const double* xyz, const double* white, std::size_t count, typename Form::Number* ratios,
                     Ratio ratio) {
    const Doubles whites[3] = {load<Doubles>(white), load<Doubles>(white + kDoubles),
                               load<Doubles>(white + 2 * kDoubles)};
    for (std::size_t i = 0; i < count; i += 3 * kDoubles)
        for (std::size_t part = 0; part < 3; ++part) {
            const std::size_t at = i + part * kDoubles;
            const Doubles component = load<Doubles>(xyz + at);
            const Doubles result = component < 0.0 ? Doubles{} : ratio(component, whites[part]);
            store(__builtin_convertvector(result, typename Form::Part), ratios + at);
        }
}

void rootsOfProducts(const double* xyz, const double* reciprocals, std::size_t triples, float* ratios,
                     float* roots, std::uint64_t* doubtful) {
    ratiosOf<Single>(xyz, reciprocals, 3 * triples, ratios, [](Doubles x, Doubles w) { return x * w; });
    rootsOf<Single>(ratios, 3 * triples, roots, doubtful);
}

void rootsOfQuotients(const double* xyz, const double* white, std::size_t triples, double* ratios,
                      double* roots, std::uint64_t* doubtful) {
    ratiosOf<Exact>(xyz, white, 3 * triples, ratios, [](Doubles x, Doubles w) { return x / w; });
    rootsOf<Exact>(ratios, 3 * triples, roots, doubtful);
}

/// 116 fy - 16, 500 (fx - fy), 200 (fy - fz): each a scale times the root before less the root at its place,
/// or, for L*, times the root behind; and an offset. No root is -0.0, nor then a difference of two, so that
/// an offset of 0 changes nothing.
template <class Form>
void labOf(const typename Form::Number* roots, std::size_t triples, double* lab) {
    using Part = typename Form::Part;
    static constexpr double kScales[kLabPattern] = {116.0, 500.0, 200.0, 116.0, 500.0, 200.0, 116.0, 500.0,
                                                    200.0, 116.0, 500.0, 200.0, 116.0, 500.0, 200.0, 116.0,
                                                    500.0, 200.0, 116.0, 500.0, 200.0, 116.0, 500.0, 200.0};
    for (std::size_t i = 0; i < 3 * triples; i += 3 * kDoubles)
        for (std::size_t part = 0; part < 3; ++part) {
            const std::size_t at = i + part * kDoubles;
            const Doubles scale = load<Doubles>(kScales + part * kDoubles);
            const auto isL = __builtin_convertvector(scale, Part) == 116;
            const Part minuend = isL ? load<Part>(roots + at + 1) : load<Part>(roots + at - 1);
            const Part subtrahend = isL ? Part{} : load<Part>(roots + at);
            const Doubles offset = scale == 116.0 ? all<Doubles>(-16.0) : Doubles{};
            store(__builtin_convertvector(minuend - subtrahend, Doubles) * scale + offset, lab + at);
        }
}

} // namespace

} // namespace qxcms::detail
