#include "logic/controls/Condition.h"

#include "logic/text/Numbers.h"
#include "logic/text/Text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace logic {

namespace {

constexpr std::size_t DEEPEST = 64; // brackets within brackets, and numbers on the stack
constexpr double EQUAL_WITHIN = 1e-6;
constexpr double UNKNOWN = std::numeric_limits<double>::quiet_NaN();

bool IsLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

char Lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool IsSame(std::string_view word, std::string_view lower) {
    return std::equal(word.begin(), word.end(), lower.begin(), lower.end(),
                      [](char one, char other) { return Lower(one) == other; });
}

bool AreEqual(double left, double right) {
    return std::fabs(left - right) <= EQUAL_WITHIN * std::max(std::fabs(left), std::fabs(right));
}

double KnownOrNot(double number) {
    return std::isfinite(number) ? number : UNKNOWN;
}

} // namespace

// Each function reads what its name says, and leaves the text behind it. After a fault all of them do
// nothing.
class Condition::Reader {
public:
    explicit Reader(std::string_view text) : text_(text), left_(text) {}

    std::optional<Fault> Read() {
        Or();
        SkipBlanks();
        if (!left_.empty()) {
            Refuse("this does not belong here");
        }
        return fault_;
    }

    std::vector<Step> steps;
    std::size_t letters = 0;

private:
    void Refuse(const char* reason) {
        if (!fault_) {
            fault_ = Fault{text_.size() - left_.size() + 1, reason};
            left_ = {};
        }
    }
    void SkipBlanks() {
        while (!left_.empty() && IsBlank(left_.front())) {
            left_.remove_prefix(1);
        }
    }
    bool Take(std::string_view symbol) {
        SkipBlanks();
        if (!left_.starts_with(symbol)) {
            return false;
        }
        left_.remove_prefix(symbol.size());
        return true;
    }
    std::string_view Word() const {
        return left_.substr(0, static_cast<std::size_t>(
                                   std::find_if_not(left_.begin(), left_.end(), IsLetter) - left_.begin()));
    }
    bool TakeWord(std::string_view word) {
        SkipBlanks();
        if (!IsSame(Word(), word)) {
            return false;
        }
        left_.remove_prefix(word.size());
        return true;
    }

    void Push(Operation operation, float operand) {
        steps.push_back({operation, operand});
        if (++depth_ > DEEPEST) {
            Refuse("this is nested too deep");
        }
    }
    void Apply(Operation operation) { steps.push_back({operation, 0.0F}); }
    void Join(Operation operation) {
        Apply(operation);
        --depth_;
    }

    void Or() {
        And();
        while (TakeWord("or")) {
            And();
            Join(Operation::Or);
        }
    }
    void And() {
        Not();
        while (TakeWord("and")) {
            Not();
            Join(Operation::And);
        }
    }
    void Not() {
        bool isReversed = false;
        bool isNumber = true;
        while (TakeWord("not")) {
            isReversed = !isReversed;
            isNumber = false;
        }
        Comparison();
        if (!isNumber) {
            Apply(Operation::Not);
            if (!isReversed) {
                Apply(Operation::Not);
            }
        }
    }
    std::optional<Operation> TakeComparison() {
        // The longer ones first.
        constexpr std::pair<const char*, Operation> SYMBOLS[] = {
            {"==", Operation::Equal},  {"=", Operation::Equal}, {"<>", Operation::Different},
            {"<=", Operation::AtMost}, {"<", Operation::Less},  {">=", Operation::AtLeast},
            {">", Operation::Greater},
        };
        for (const auto& [symbol, operation] : SYMBOLS) {
            if (Take(symbol)) {
                return operation;
            }
        }
        return std::nullopt;
    }
    void Comparison() {
        Sum();
        if (const auto operation = TakeComparison()) {
            Sum();
            Join(*operation);
            const std::string_view before = left_;
            if (TakeComparison()) {
                left_ = before;
                SkipBlanks();
                Refuse("a second comparison needs brackets, or an and between");
            }
        }
    }
    void Sum() {
        Product();
        for (;;) {
            if (Take("+")) {
                Product();
                Join(Operation::Add);
            } else if (Take("-")) {
                Product();
                Join(Operation::Subtract);
            } else {
                return;
            }
        }
    }
    void Product() {
        Signed();
        for (;;) {
            if (Take("*")) {
                Signed();
                Join(Operation::Multiply);
            } else if (Take("/")) {
                Signed();
                Join(Operation::Divide);
            } else {
                return;
            }
        }
    }
    void Signed() {
        bool isNegative = false;
        for (;;) {
            if (Take("-")) {
                isNegative = !isNegative;
            } else if (!Take("+")) {
                break;
            }
        }
        Value();
        if (isNegative) {
            Apply(Operation::Negate);
        }
    }
    void Value() {
        SkipBlanks();
        if (Take("(")) {
            Nested();
            Close();
            return;
        }
        const std::string_view word = Word();
        if (word.size() == 1) {
            const int letter = Lower(word.front()) - 'a';
            left_.remove_prefix(1);
            letters = std::max(letters, static_cast<std::size_t>(letter) + 1);
            Push(Operation::Letter, static_cast<float>(letter));
        } else if (!word.empty()) {
            Function();
        } else if (const char first = left_.empty() ? ' ' : left_.front();
                   first == '.' || (first >= '0' && first <= '9')) {
            const auto number = TakeFloat(left_);
            if (!number) {
                Refuse("this is no number");
            }
            Push(Operation::Number, number.value_or(0.0F));
        } else {
            Refuse("a value is missing");
        }
    }
    void Function() {
        if (TakeWord("abs")) {
            Open();
            Nested();
            Close();
            Apply(Operation::Absolute);
            return;
        }
        const bool isMinimum = TakeWord("min");
        if (!isMinimum && !TakeWord("max")) {
            Refuse("this is no word of a condition, and no letter");
            return;
        }
        Open();
        Nested();
        while (Take(",")) {
            Nested();
            Join(isMinimum ? Operation::Minimum : Operation::Maximum);
        }
        Close();
    }
    void Nested() {
        if (++brackets_ > DEEPEST) {
            Refuse("this is nested too deep");
        } else {
            Or();
        }
        --brackets_;
    }
    void Open() {
        if (!Take("(")) {
            Refuse("a bracket is missing");
        }
    }
    void Close() {
        if (!Take(")")) {
            Refuse("a bracket is missing");
        }
    }

    std::string_view text_;
    std::string_view left_;
    std::size_t brackets_ = 0;
    std::size_t depth_ = 0; // of the stack
    std::optional<Fault> fault_;
};

Condition::Condition() : steps_{{Operation::Letter, 0.0F}} {}

std::optional<Condition::Fault> Condition::Read(std::string_view text) {
    Reader reader(text);
    const auto fault = reader.Read();
    if (!fault) {
        steps_ = std::move(reader.steps);
        letters_ = reader.letters;
    }
    return fault;
}

double Condition::Combine(Operation operation, double left, double right) {
    // One side can decide by itself.
    if (operation == Operation::And && (left == 0 || right == 0)) {
        return 0;
    }
    if (operation == Operation::Or &&
        ((left != 0 && !std::isnan(left)) || (right != 0 && !std::isnan(right)))) {
        return 1;
    }
    if (std::isnan(left) || std::isnan(right)) {
        return UNKNOWN;
    }
    switch (operation) {
    case Operation::Multiply:
        return KnownOrNot(left * right);
    case Operation::Divide:
        return right == 0 ? UNKNOWN : KnownOrNot(left / right);
    case Operation::Add:
        return KnownOrNot(left + right);
    case Operation::Subtract:
        return KnownOrNot(left - right);
    case Operation::Minimum:
        return std::min(left, right);
    case Operation::Maximum:
        return std::max(left, right);
    case Operation::Equal:
        return AreEqual(left, right) ? 1 : 0;
    case Operation::Different:
        return AreEqual(left, right) ? 0 : 1;
    case Operation::Less:
        return left < right && !AreEqual(left, right) ? 1 : 0;
    case Operation::AtMost:
        return left < right || AreEqual(left, right) ? 1 : 0;
    case Operation::Greater:
        return left > right && !AreEqual(left, right) ? 1 : 0;
    case Operation::AtLeast:
        return left > right || AreEqual(left, right) ? 1 : 0;
    case Operation::And:
        return 1; // neither is 0
    default:
        return 0; // Or: both are
    }
}

std::optional<double> Condition::Evaluate(std::span<const float> values) const {
    if (letters_ > values.size()) {
        return std::nullopt;
    }
    double stack[DEEPEST + 1];
    double* top = stack; // behind the last number
    for (const Step& step : steps_) {
        switch (step.operation) {
        case Operation::Number:
            *top++ = step.operand;
            break;
        case Operation::Letter:
            *top++ = KnownOrNot(values[static_cast<std::size_t>(step.operand)]);
            break;
        case Operation::Negate:
            top[-1] = -top[-1];
            break;
        case Operation::Absolute:
            top[-1] = std::fabs(top[-1]);
            break;
        case Operation::Not:
            top[-1] = std::isnan(top[-1]) ? UNKNOWN : top[-1] == 0 ? 1 : 0;
            break;
        default:
            --top;
            top[-1] = Combine(step.operation, top[-1], *top);
            break;
        }
    }
    return std::isnan(*stack) ? std::nullopt : std::optional(*stack);
}

std::string FaultText(const Condition::Fault& fault) {
    return "at " + std::to_string(fault.place) + ": " + fault.reason;
}

std::string ConditionObjection(std::string_view text) {
    const auto fault = Condition().Read(text);
    return fault ? "cannot be read " + FaultText(*fault) : "";
}

} // namespace logic
