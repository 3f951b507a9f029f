#include "Decimal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <compare>
#include <cstddef>
#include <limits>

#include "Compiler.h"

namespace pocketjson {

namespace {

// A natural number of up to 4096 bits, the least significant limb first.
class BigNumber {
 public:
    constexpr explicit BigNumber(std::uint64_t value) noexcept {
        for (; value != 0; value >>= 32) limbs_[size_++] = static_cast<std::uint32_t>(value);
    }

    constexpr void multiplyAdd(std::uint32_t factor, std::uint32_t summand) noexcept {
        std::uint64_t carry = summand;
        for (std::size_t i = 0; i < size_; ++i) {
            carry += std::uint64_t{limbs_[i]} * factor;
            limbs_[i] = static_cast<std::uint32_t>(carry);
            carry >>= 32;
        }
        if (carry != 0) limbs_[size_++] = static_cast<std::uint32_t>(carry);
    }

    consteval void divide(std::uint32_t divisor) noexcept {
        std::uint64_t rest = 0;
        for (std::size_t i = size_; i-- > 0;) {
            rest = rest << 32 | limbs_[i];
            limbs_[i] = static_cast<std::uint32_t>(rest / divisor);
            rest %= divisor;
        }
        while (size_ > 0 && limbs_[size_ - 1] == 0) --size_;
    }

    constexpr void shiftLeft(std::size_t bits) noexcept {
        multiplyAdd(1U << bits % 32, 0);
        const std::size_t shift = bits / 32;
        for (std::size_t i = size_; i-- > 0;) limbs_[i + shift] = limbs_[i];
        for (std::size_t i = 0; i < shift; ++i) limbs_[i] = 0;
        size_ += shift;
    }

    void multiplyByPowerOfFive(std::int64_t power) noexcept {
        constexpr std::uint32_t kFiveToThe13 = 1220703125;
        for (; power >= 13; power -= 13) multiplyAdd(kFiveToThe13, 0);
        for (; power > 0; --power) multiplyAdd(5, 0);
    }

    // The 128 bits from the topmost one on.
    consteval Wide top() const noexcept {
        const int unused = std::countl_zero(limbs_[size_ - 1]);
        std::array<std::uint64_t, 5> limb{};
        for (std::size_t i = 0; i < limb.size() && i < size_; ++i) limb[i] = limbs_[size_ - 1 - i];
        const Wide aligned{limb[0] << 32 | limb[1], limb[2] << 32 | limb[3]};
        if (unused == 0) return aligned;
        return {aligned.high << unused | aligned.low >> (64 - unused),
                aligned.low << unused | limb[4] >> (32 - unused)};
    }

    friend std::strong_ordering operator<=>(const BigNumber& left, const BigNumber& right) noexcept {
        if (left.size_ != right.size_) return left.size_ <=> right.size_;
        for (std::size_t i = left.size_; i-- > 0;)
            if (left.limbs_[i] != right.limbs_[i]) return left.limbs_[i] <=> right.limbs_[i];
        return std::strong_ordering::equal;
    }

 private:
    std::array<std::uint32_t, 128> limbs_{};
    std::size_t size_ = 0;
};

// The powers of ten as 128 bits, of which the topmost is set, and a power of two: 10^q = bits * 2^powerExponent(q).
// What is beyond 128 bits is cut off, so that the true bits are less than 1 above those here; those of 0 to 55 are
// exact.
constexpr int kFirstPower = -342;
constexpr int kLastPower = 340;
constexpr int kLastExactPower = 55;

consteval auto powersOfTen() noexcept {
    std::array<Wide, kLastPower - kFirstPower + 1> powers{};
    BigNumber power(1);
    for (int q = 0; q <= kLastPower; ++q) {
        powers[static_cast<std::size_t>(q - kFirstPower)] = power.top();
        power.multiplyAdd(5, 0);
    }
    BigNumber reciprocal(1);
    reciprocal.shiftLeft(1024);  // leaves 229 bits of 5^-342
    for (int q = -1; q >= kFirstPower; --q) {
        reciprocal.divide(5);
        powers[static_cast<std::size_t>(q - kFirstPower)] = reciprocal.top();
    }
    return powers;
}

constexpr auto kPowersOfTen = powersOfTen();

constexpr Wide powerBits(int q) noexcept {
    return kPowersOfTen[static_cast<std::size_t>(q - kFirstPower)];
}

constexpr int powerExponent(int q) noexcept {
    return (q * 217706 >> 16) - 127;  // 217706 / 2^16 is log2(10), near enough for all powers of the table
}

// A 64-bit number times the bits of a power of ten: 192 bits.
struct Product {
    Product(std::uint64_t number, Wide power) noexcept {
        const Wide upper = multiply(number, power.high);
        const Wide lower = multiply(number, power.low);
        low = lower.low;
        middle = upper.low + lower.high;
        high = upper.high + (middle < lower.high);
    }
    std::uint64_t high, middle, low;
};

// The layout of a double.
constexpr int kMantissaBits = std::numeric_limits<double>::digits;  // with the one that is not stored
constexpr std::uint64_t kHiddenBit = std::uint64_t{1} << (kMantissaBits - 1);
constexpr std::uint64_t kInfinity = std::bit_cast<std::uint64_t>(std::numeric_limits<double>::infinity());
constexpr int kSmallestExponent = -1074;  // of the lowest mantissa bit, for all subnormal numbers

struct Binary {
    explicit Binary(std::uint64_t bits) noexcept
        : mantissa(bits % kHiddenBit), exponent(static_cast<int>(bits / kHiddenBit)) {
        if (exponent > 0) {
            mantissa |= kHiddenBit;
            --exponent;
        }
        exponent += kSmallestExponent;
    }
    std::uint64_t mantissa;
    int exponent;
};

// The bits of a double that is the nearest one or, unless that is certain, the next one below the decimal.
struct Candidate {
    std::uint64_t bits;
    bool isNearest;
};

// The same where the fraction is half a unit of the mantissa or just less, by the upper part of the product alone.
Candidate candidateNearTie(std::uint64_t digits, int q, std::uint64_t high, std::uint64_t fraction, std::uint64_t half,
                           std::uint64_t below) noexcept {
    const Product product(digits, powerBits(q));
    fraction += product.high - high;  // 0 or 1
    const bool isExact = 0 <= q && q <= kLastExactPower;
    if (fraction < half) {
        // What was cut off the power decides if it makes up for what is missing.
        return {below, isExact || product.middle != ~std::uint64_t{0} || product.low + digits >= digits};
    }
    const bool isTie = isExact && fraction == half && product.middle == 0 && product.low == 0;
    return {below + (isTie ? below & 1 : 1), true};
}

inline Candidate candidateFor(std::uint64_t digits, std::int64_t exponent) noexcept {
    if (digits == 0 || exponent < kFirstPower) return {0, true};
    if (exponent > std::numeric_limits<double>::max_exponent10) return {kInfinity, true};
    const int q = static_cast<int>(exponent);
    const int unused = std::countl_zero(digits);
    digits <<= unused;
    const Wide power = powerBits(q);
    const std::uint64_t high = multiply(digits, power.high).high;  // of the product, or 1 less: enough but near a tie

    const int highUnused = high >> 63 == 0;
    const int topExponent = powerExponent(q) - unused + 191 - highUnused;
    int rest = 64 - highUnused - kMantissaBits;  // bits that do not go into the mantissa: 10 or more
    int storedExponent = topExponent - kSmallestExponent - (kMantissaBits - 1);
    if (storedExponent < 0) {
        rest -= storedExponent;
        storedExponent = 0;
        if (rest > 64 - highUnused) return {0, true};
    } else if (topExponent >= std::numeric_limits<double>::max_exponent) {
        return {kInfinity, true};
    }

    // With the carry of a mantissa that is rounded up to the next power of two, the exponent adds up as well.
    const std::uint64_t mantissa = rest < 64 ? high >> rest : 0;
    const std::uint64_t below = mantissa + static_cast<std::uint64_t>(storedExponent) * kHiddenBit;
    const std::uint64_t half = std::uint64_t{1} << (rest - 1);
    const std::uint64_t fraction = high & ((half << 1) - 1);
    if (fraction - (half - 1) > 1) return {below + (fraction > half), true};
    return candidateNearTie(digits, q, high, fraction, half, below);
}

// Which of two neighbours a decimal is nearest to: the one with the given bits or the next one above.
std::uint64_t nearestOfTwo(std::uint64_t bits, BigNumber digits, std::int64_t exponent) noexcept {
    const Binary binary(bits);
    BigNumber halfway(2 * binary.mantissa + 1);
    std::int64_t twos = exponent - (binary.exponent - 1);  // of the decimal, as far as the other side has fewer
    if (exponent >= 0)
        digits.multiplyByPowerOfFive(exponent);
    else
        halfway.multiplyByPowerOfFive(-exponent);
    if (twos >= 0)
        digits.shiftLeft(static_cast<std::size_t>(twos));
    else
        halfway.shiftLeft(static_cast<std::size_t>(-twos));
    const auto order = digits <=> halfway;
    return bits + (order > 0 || (order == 0 && (bits & 1) != 0));
}

}  // namespace

Decimal seventeenDigits(double number) noexcept {
    const Binary binary(std::bit_cast<std::uint64_t>(number));
    const int unused = std::countl_zero(binary.mantissa);
    const int topExponent = binary.exponent + 63 - unused;
    // The power of ten in the number's power of two: that of the number, or one less. 78913 / 2^18 is log10(2), near
    // enough for all doubles.
    const int power = topExponent * 78913 >> 18;
    const int q = 16 - power;

    // The number is scaled to 17 digits, or 18 when the power was one less.
    const Product product(binary.mantissa << unused, powerBits(q));
    const int rest = -(binary.exponent - unused + powerExponent(q)) - 128;  // bits of product.high after the point
    const std::uint64_t scaled = product.high >> rest;
    const bool hasMore = (product.middle | product.low) != 0;

    // What was cut off the power makes the product too small by less than 2^-68, and never decides: as the continued
    // fractions of all scales show, no scaled double is above a multiple of one half by less than 2^-67. A tie, which
    // is such a multiple, has few digits after the point and thus an exact power.
    const bool isTooLong = scaled >= 100000000000000000;
    std::uint64_t digits = isTooLong ? scaled / 10 : scaled;
    const std::uint64_t one = (isTooLong ? 10ULL : 1ULL) << rest;
    const std::uint64_t fraction = product.high - digits * one;
    digits += 2 * fraction + (hasMore || digits % 2 != 0) > one;
    const bool isRoundedUpToPower = digits == 100000000000000000;
    if (isRoundedUpToPower) digits /= 10;
    return {digits, isTooLong + isRoundedUpToPower - q};
}

double nearestDouble(Decimal decimal) noexcept {
    auto [bits, isNearest] = candidateFor(decimal.digits, decimal.exponent);
    if (!isNearest) bits = nearestOfTwo(bits, BigNumber(decimal.digits), decimal.exponent);
    return std::bit_cast<double>(bits);
}

double nearestDouble(std::string_view mantissa, std::int64_t exponent) noexcept {
    constexpr int kDecidingDigits = 800;  // halfway between two doubles lies no number with more than 767

    std::int64_t left = static_cast<std::int64_t>(mantissa.size()) - std::ranges::count(mantissa, '.');
    BigNumber number(0);
    std::uint64_t leading = 0;
    std::int64_t leadingExponent = 0;
    int taken = 0;
    const char* digit = mantissa.data();
    const char* const end = digit + mantissa.size();
    for (; digit != end && taken < kDecidingDigits; ++digit) {
        if (*digit == '.') continue;
        const auto value = static_cast<std::uint32_t>(*digit - '0');
        number.multiplyAdd(10, value);
        ++taken;
        --left;
        if (taken <= kDigitsOfDecimal) {
            leading = leading * 10 + value;
            leadingExponent = exponent + left;
        }
    }
    // Of the digits after that, it is enough to know whether there is one other than 0.
    exponent += left;
    if (std::any_of(digit, end, [](char byte) { return byte > '0'; })) {
        number.multiplyAdd(10, 1);
        --exponent;
    }

    const double below = nearestDouble({leading, leadingExponent});
    const double above = nearestDouble({leading + 1, leadingExponent});
    if (below == above) return below;
    return std::bit_cast<double>(nearestOfTwo(std::bit_cast<std::uint64_t>(below), number, exponent));
}

}  // namespace pocketjson
