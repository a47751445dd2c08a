#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>

#include <cmath>
#include <optional>
#include <vector>

/// Reads a text with formulas in it, "25.2 + 3 × (9 − 4) / 2 = 32.7", and calculates them again as a person
/// would with a pocket calculator.
namespace Pocket
{

struct Token
{
    QString text;
    bool isNumber = false;
    double value = 0.0; ///< without its sign
    double unit = 1.0;  ///< what one more in its last digit is

    [[nodiscard]] bool is(QLatin1StringView other) const
    {
        return text == other;
    }
    [[nodiscard]] bool is(QChar other) const
    {
        return text.size() == 1 && text.front() == other;
    }
};

/// An equation of the text: what its left side gives, and what is printed.
struct Equation
{
    QString left;
    double calculated = 0.0;
    double printed = 0.0;
    double unit = 1.0;   ///< of the last printed digit
    std::size_t end = 0; ///< the place of the printed number among the tokens
};

inline std::vector<Token> tokens(const QString& text)
{
    static const QRegularExpression PATTERN(
        QStringLiteral("[\\p{L}_%][\\p{L}\\p{N}_]*|\\d+(?:\\.\\d+)?(?:e[+-]?\\d+)?|\\S"));
    std::vector<Token> found;
    for (auto match = PATTERN.globalMatch(text); match.hasNext();) {
        Token token{match.next().captured()};
        token.isNumber = token.text.front() >= u'0' && token.text.front() <= u'9';
        if (token.isNumber) {
            token.value = token.text.toDouble();
            const qsizetype point = token.text.indexOf(u'.');
            if (token.text.contains(u'e'))
                token.unit = token.value * 1e-9;
            else if (point >= 0)
                token.unit = std::pow(10.0, -static_cast<double>(token.text.size() - point - 1));
        }
        found.push_back(token);
    }
    return found;
}

/// Sums, products, brackets, and the signs ² and ³ behind a number or a bracket.
class Calculator
{
public:
    Calculator(const std::vector<Token>& tokens, std::size_t begin, std::size_t end)
        : m_tokens(tokens)
        , m_next(begin)
        , m_end(end)
    {
    }
    double result()
    {
        const double value = sum();
        return m_next == m_end ? value : std::nan("");
    }

private:
    bool take(QChar sign)
    {
        const bool found = m_next < m_end && m_tokens[m_next].is(sign);
        m_next += found ? 1 : 0;
        return found;
    }
    double sum()
    {
        double value = take(u'−') ? -product() : product();
        for (;;) {
            if (take(u'+'))
                value += product();
            else if (take(u'−'))
                value -= product();
            else
                return value;
        }
    }
    double product()
    {
        double value = power();
        for (;;) {
            if (take(u'×'))
                value *= power();
            else if (take(u'/'))
                value /= power();
            else
                return value;
        }
    }
    double power()
    {
        double value = std::nan("");
        if (take(u'(')) {
            value = sum();
            if (!take(u')'))
                return std::nan("");
        } else if (m_next < m_end && m_tokens[m_next].isNumber) {
            value = m_tokens[m_next++].value;
        }
        if (take(u'²'))
            return value * value;
        return take(u'³') ? value * value * value : value;
    }

    const std::vector<Token>& m_tokens;
    std::size_t m_next;
    std::size_t m_end;
};

/// Where the formula begins that ends before `end`; `end` where there is none.
inline std::size_t formulaStart(const std::vector<Token>& tokens, std::size_t end)
{
    const auto isOperator = [](const Token& t) {
        return t.is(u'+') || t.is(u'−') || t.is(u'×') || t.is(u'/');
    };
    std::size_t start = end;
    std::size_t complete = end; // the leftmost place from which it is a formula
    int depth = 0;
    bool wantsOperand = true;
    while (start > 0) {
        const Token& t = tokens[start - 1];
        const bool opens = t.is(u'(') && depth > 0; // behind it an operand, or one with a sign
        if (wantsOperand && (t.is(u')') || t.is(u'²') || t.is(u'³')))
            depth += t.is(u')') ? 1 : 0;
        else if (wantsOperand && t.isNumber)
            wantsOperand = false;
        else if (opens) {
            --depth;
            wantsOperand = false;
        } else if (!wantsOperand && isOperator(t))
            wantsOperand = true;
        else
            break;
        --start;
        if (depth == 0 && !wantsOperand)
            complete = start;
    }
    return complete;
}

/// All equations: a formula, "=", a number.
inline std::vector<Equation> equations(const std::vector<Token>& tokens)
{
    std::vector<Equation> found;
    for (std::size_t i = 1; i + 1 < tokens.size(); ++i) {
        if (!tokens[i].is(u'='))
            continue;
        const std::size_t start = formulaStart(tokens, i);
        const bool isNegative = tokens[i + 1].is(u'−') && i + 2 < tokens.size();
        const std::size_t number = i + (isNegative ? 2 : 1);
        if (start == i || !tokens[number].isNumber)
            continue;
        Equation equation;
        for (std::size_t k = start; k < i; ++k)
            equation.left += tokens[k].text + u' ';
        equation.calculated = Calculator(tokens, start, i).result();
        equation.printed = isNegative ? -tokens[number].value : tokens[number].value;
        equation.unit = tokens[number].unit;
        equation.end = number;
        found.push_back(equation);
    }
    return found;
}

} // namespace Pocket
