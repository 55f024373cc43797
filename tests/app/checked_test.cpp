#include "app/checked.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

#include <limits>
#include <map>
#include <vector>

namespace {

/// The text of what `call` raises, as an exception of type E; empty for nothing.
template <class E, class Call>
std::string failureOf(Call call)
{
    try {
        call();
    } catch (const E& failure) {
        return failure.what();
    }
    return std::string();
}

} // namespace

class CCheckedTest : public QObject
{
    Q_OBJECT

private slots:
    void missingKey();
    void subscriptBehindTheEnd();
    void wrongAlternative();
    void numbersIgnoreWhatFollows();
    void textsThatAreNoNumbers();
    void numbersOutOfRange();
    void unsignedNumbersHave32Bits();
};

void CCheckedTest::missingKey()
{
    const std::map<std::string, int> map = {{"a", 1}};
    QCOMPARE(checked::at(map, std::string("a")), 1);
    QCOMPARE(failureOf<std::out_of_range>([&map] { checked::at(map, std::string("b")); }),
             std::string("invalid map<K, T> key"));
}

void CCheckedTest::subscriptBehindTheEnd()
{
    std::vector<int> vector = {1, 2};
    QCOMPARE(checked::element(vector, 1), 2);
    QCOMPARE(failureOf<std::out_of_range>([&vector] { checked::element(vector, 2); }),
             std::string("invalid vector subscript"));
}

void CCheckedTest::wrongAlternative()
{
    const std::variant<double, bool> value = 1.5;
    QCOMPARE(checked::get<double>(value), 1.5);
    QCOMPARE(failureOf<std::bad_variant_access>([&value] { checked::get<bool>(value); }),
             std::string("bad variant access"));
}

void CCheckedTest::numbersIgnoreWhatFollows()
{
    QCOMPARE(checked::stoi(" -12x"), -12);
    QCOMPARE(checked::stoul("7 8"), 7UL);
    QCOMPARE(checked::stod("0.5abc"), 0.5);
}

void CCheckedTest::textsThatAreNoNumbers()
{
    QCOMPARE(failureOf<std::invalid_argument>([] { checked::stoi("x1"); }),
             std::string("invalid stoi argument"));
    QCOMPARE(failureOf<std::invalid_argument>([] { checked::stoul("-"); }),
             std::string("invalid stoul argument"));
    // Nothing stands between a sign and its number.
    QCOMPARE(failureOf<std::invalid_argument>([] { checked::stoul("- 5"); }),
             std::string("invalid stoul argument"));
    QCOMPARE(failureOf<std::invalid_argument>([] { checked::stoul("--5"); }),
             std::string("invalid stoul argument"));
    QCOMPARE(failureOf<std::invalid_argument>([] { checked::stod(""); }),
             std::string("invalid stod argument"));
}

void CCheckedTest::numbersOutOfRange()
{
    QCOMPARE(failureOf<std::out_of_range>([] { checked::stoi("2147483648"); }),
             std::string("stoi argument out of range"));
    QCOMPARE(checked::stoi("-2147483648"), std::numeric_limits<int>::min());
    QCOMPARE(failureOf<std::out_of_range>([] { checked::stoul("4294967296"); }),
             std::string("stoul argument out of range"));
    QCOMPARE(failureOf<std::out_of_range>([] { checked::stod("1e999"); }),
             std::string("stod argument out of range"));
}

void CCheckedTest::unsignedNumbersHave32Bits()
{
    QCOMPARE(checked::stoul("4294967295"), 4294967295UL);
    QCOMPARE(checked::stoul("-1"), 4294967295UL);
    QCOMPARE(checked::stoul("+5"), 5UL);
}

TARNEL_TEST_MAIN(CCheckedTest)
#include "checked_test.moc"
