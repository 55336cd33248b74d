// SPDX-License-Identifier: MIT
#include <vexdesk/outcome.h>

#include "support/strictlog.h"

#include <QtTest/QTest>

#include <memory>
#include <type_traits>

using vexdesk::Failure;
using vexdesk::Outcome;
using vexdesk::Result;

// An outcome that is asked for nothing must not turn into a number or a text by itself.
static_assert(!std::is_convertible_v<Outcome, bool>);
static_assert(!std::is_convertible_v<Result<int>, bool>);
static_assert(!std::is_convertible_v<QString, Outcome>);
static_assert(std::is_nothrow_move_constructible_v<Outcome>);
static_assert(std::is_nothrow_move_constructible_v<Result<QString>>);

namespace {

const QString reason = QStringLiteral("The disk is full");

Outcome write(bool fails)
{
    if (fails)
        return Failure{reason};
    return {};
}

Result<QString> read(bool fails)
{
    if (const Outcome written = write(fails); !written)
        return written.failure();
    return QStringLiteral("text");
}

} // namespace

class OutcomeTest final : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { testsupport::failOnStrayWarnings(); }
    void anOutcomeIsDoneOrHasItsReason();
    void aFailureWithoutTextIsOneToo();
    void aFailureMayKeepItsReasonApart();
    void aResultIsItsValueOrHasItsReason();
    void aTextIsAValueAndNoReason();
    void aValueMayBeMovedOnly();
};

void OutcomeTest::anOutcomeIsDoneOrHasItsReason()
{
    QVERIFY(write(false));
    QVERIFY(write(false).message().isNull());
    QVERIFY(!write(true));
    QCOMPARE(write(true).message(), reason);
    QVERIFY(write(true) == Outcome(Failure{reason}));
    QVERIFY(!(write(true) == write(false)));
}

void OutcomeTest::aFailureWithoutTextIsOneToo()
{
    QVERIFY(!Outcome(Failure{}));
    QVERIFY(!Result<int>(Failure{}));
}

void OutcomeTest::aFailureMayKeepItsReasonApart()
{
    const Outcome apart = Failure{QStringLiteral("Not written"), reason};
    QCOMPARE(apart.message(), QStringLiteral("Not written"));
    QCOMPARE(apart.wholeMessage(), QStringLiteral("Not written: The disk is full"));
    QCOMPARE(write(true).wholeMessage(), reason);
    QVERIFY(write(false).wholeMessage().isNull());
    QVERIFY(apart != Outcome(Failure{QStringLiteral("Not written")}));
}

void OutcomeTest::aResultIsItsValueOrHasItsReason()
{
    const Result<QString> value = read(false);
    QVERIFY(value);
    QCOMPARE(*value, QStringLiteral("text"));
    QCOMPARE(value->size(), qsizetype(4));
    QCOMPARE(value.valueOr(QString()), QStringLiteral("text"));
    QVERIFY(value.message().isNull());

    const Result<QString> none = read(true);
    QVERIFY(!none);
    QCOMPARE(none.message(), reason);
    QCOMPARE(none.failure().message, reason);
    QCOMPARE(none.valueOr(QStringLiteral("other")), QStringLiteral("other"));
    QVERIFY(!(none == value));
}

void OutcomeTest::aTextIsAValueAndNoReason()
{
    const Result<QString> value(reason);
    QVERIFY(value);
    QCOMPARE(*value, reason);
}

void OutcomeTest::aValueMayBeMovedOnly()
{
    Result<std::unique_ptr<int>> result(std::make_unique<int>(7));
    **result += 1;
    const std::unique_ptr<int> taken = *std::move(result);
    QCOMPARE(*taken, 8);
}

QTEST_GUILESS_MAIN(OutcomeTest)
#include "tst_outcome.moc"
