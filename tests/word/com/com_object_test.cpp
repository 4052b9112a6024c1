// How calls reach a COM server, and how its failures come back.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <winerror.h>

#include <chrono>

#include <basic/conversion.h>

#include "com/com_object.h"
#include "com/com_value.h"
#include "scripted_dispatch.h"

namespace quardele::tests {
namespace {

using automation::Missing;
using automation::NamedArgument;
using automation::ObjectPtr;
using automation::Value;
using automation::com::ComObject;
using automation::com::ComPointer;
using basic::RuntimeError;
using testing::ElementsAre;

class ComObjectTest : public testing::Test {
 protected:
    Value Call(std::vector<Value> arguments = {}, std::vector<NamedArgument> named = {}) {
        return object_.Call(u"Known", arguments, named);
    }
    /// The error of a call that the server answers with that result.
    RuntimeError ErrorOf(HRESULT result) {
        server_.results = {result};
        try {
            Call();
        } catch (const RuntimeError& error) {
            return error;
        }
        return RuntimeError(0);
    }

    ScriptedDispatch server_;
    ComObject object_{ComPointer<IDispatch>::Shared(&server_),
                      {.attempts = 3, .pause = std::chrono::milliseconds(1)}};
};

TEST_F(ComObjectTest, ArgumentsGoFromTheLastToTheFirstBehindThoseWithNames) {
    Call({1, 2, 3}, {{u"Named", 7}});
    EXPECT_THAT(server_.numbers, ElementsAre(7, 3, 2, 1));
    EXPECT_THAT(server_.named, ElementsAre(2));
    EXPECT_EQ(server_.kind, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
}

TEST_F(ComObjectTest, APropertyIsPutUnderItsOwnName) {
    object_.Set(u"Known", 5);
    EXPECT_THAT(server_.numbers, ElementsAre(5));
    EXPECT_THAT(server_.named, ElementsAre(DISPID_PROPERTYPUT));
    EXPECT_EQ(server_.kind, DISPATCH_PROPERTYPUT);
}

TEST_F(ComObjectTest, EveryKindOfValueHasOneOfCom) {
    Call({Value(), basic::Variant(basic::Null{}), true, 1, 1.5, basic::Variant(basic::Date{46346}), u"é€",
          Missing{}});
    EXPECT_THAT(server_.kinds,
                ElementsAre(VT_ERROR, VT_BSTR, VT_DATE, VT_R8, VT_I4, VT_BOOL, VT_NULL, VT_EMPTY));
}

TEST_F(ComObjectTest, WhatComHasNoKindForIsRefusedBeforeTheCall) {
    EXPECT_THROW(Call({basic::Variant(basic::Binary{1, 2})}), RuntimeError);
    EXPECT_EQ(server_.calls, 0);
}

TEST_F(ComObjectTest, AnswersComeBackInOurKinds) {
    const auto answerOf = [this](VARTYPE kind, const auto& set) {
        server_.answer = {};
        server_.answer.vt = kind;
        set(server_.answer);
        return Call();
    };
    EXPECT_EQ(answerOf(VT_BOOL, [](VARIANT& v) { v.boolVal = VARIANT_TRUE; }), Value(true));
    EXPECT_EQ(answerOf(VT_I2, [](VARIANT& v) { v.iVal = -7; }), Value(-7));
    EXPECT_EQ(answerOf(VT_UI1, [](VARIANT& v) { v.bVal = 200; }), Value(200));
    EXPECT_EQ(answerOf(VT_UI4, [](VARIANT& v) { v.ulVal = 4000000000U; }), Value(4000000000.0));
    EXPECT_EQ(answerOf(VT_I8, [](VARIANT& v) { v.llVal = -5; }), Value(-5));
    EXPECT_EQ(answerOf(VT_I8, [](VARIANT& v) { v.llVal = -5000000000; }), Value(-5000000000.0));
    EXPECT_EQ(answerOf(VT_DECIMAL,
                       [](VARIANT& v) {
                           VarDecFromR8(2.25, &v.decVal);
                           v.vt = VT_DECIMAL;
                       }),
              Value(2.25));
    EXPECT_EQ(answerOf(VT_R4, [](VARIANT& v) { v.fltVal = 0.5F; }), Value(0.5));
    EXPECT_EQ(answerOf(VT_CY, [](VARIANT& v) { v.cyVal.int64 = 12500; }), Value(1.25));
    EXPECT_EQ(answerOf(VT_DATE, [](VARIANT& v) { v.date = 46346; }),
              Value(basic::Variant(basic::Date{46346})));
    EXPECT_EQ(answerOf(VT_NULL, [](VARIANT&) {}), Value(basic::Variant(basic::Null{})));
    EXPECT_EQ(answerOf(VT_EMPTY, [](VARIANT&) {}), Value());
    EXPECT_EQ(answerOf(VT_BSTR, [](VARIANT& v) { v.bstrVal = nullptr; }), Value(u""));
    EXPECT_EQ(answerOf(VT_DISPATCH, [](VARIANT& v) { v.pdispVal = nullptr; }), Value(ObjectPtr()));
    EXPECT_EQ(answerOf(VT_UNKNOWN, [](VARIANT& v) { v.punkVal = nullptr; }), Value(ObjectPtr()));
    long pointedAt = 12;
    EXPECT_EQ(answerOf(VT_BYREF | VT_I4, [&](VARIANT& v) { v.plVal = &pointedAt; }), Value(12));
}

TEST_F(ComObjectTest, AnObjectOfUnknownKindIsAskedWhetherItCanBeCalled) {
    ScriptedDispatch child;
    server_.answer.vt = VT_UNKNOWN;
    server_.answer.punkVal = &child;
    const ObjectPtr held = Call().Pointer();
    held->Call(u"Known");
    EXPECT_EQ(child.calls, 1);
}

TEST_F(ComObjectTest, AnObjectCanBePut) {
    ScriptedDispatch other;
    server_.answer.vt = VT_DISPATCH;
    server_.answer.pdispVal = &other;
    const ObjectPtr held = Call().Pointer();
    object_.Set(u"Known", held);
    EXPECT_THAT(server_.kinds, ElementsAre(VT_DISPATCH));
    EXPECT_EQ(server_.kind, DISPATCH_PROPERTYPUT);
}

TEST_F(ComObjectTest, ATextComesBackWhole) {
    server_.answer.vt = VT_BSTR;
    server_.answer.bstrVal = SysAllocString(L"Été à 100 €");
    EXPECT_EQ(Call(), Value(u"Été à 100 €"));
    VariantClear(&server_.answer);
}

TEST_F(ComObjectTest, AnObjectIsHeldAndLetGo) {
    ScriptedDispatch child;
    server_.answer.vt = VT_DISPATCH;
    server_.answer.pdispVal = &child;
    {
        const ObjectPtr held = Call().Pointer();
        EXPECT_EQ(child.references, 2U);
        Call({held});
        EXPECT_THAT(server_.kinds, ElementsAre(VT_DISPATCH));
    }
    EXPECT_EQ(child.references, 1U);
}

TEST_F(ComObjectTest, AnArrayIsRefused) {
    server_.answer.vt = VT_ARRAY | VT_I4;
    server_.answer.parray = nullptr;
    EXPECT_THROW(Call(), RuntimeError);
}

TEST_F(ComObjectTest, AnUnknownMemberIs438AndAnUnknownNamedArgument448) {
    try {
        object_.Get(u"Unknown");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), basic::error::kNoSuchMember);
    }
    try {
        Call({}, {{u"Wrong", 1}});
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 448);
    }
    EXPECT_EQ(server_.calls, 0);
}

TEST_F(ComObjectTest, WellKnownResultsHaveTheirNumbers) {
    EXPECT_EQ(ErrorOf(DISP_E_MEMBERNOTFOUND).Number(), 438);
    EXPECT_EQ(ErrorOf(DISP_E_TYPEMISMATCH).Number(), 13);
    EXPECT_EQ(ErrorOf(DISP_E_BADPARAMCOUNT).Number(), 450);
    EXPECT_EQ(ErrorOf(RPC_E_DISCONNECTED).Number(), 462);
    EXPECT_EQ(ErrorOf(HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE)).Number(), 462);
    EXPECT_EQ(ErrorOf(MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 4198)).Number(), 4198);
    EXPECT_EQ(ErrorOf(E_ACCESSDENIED).Number(), E_ACCESSDENIED);
}

TEST_F(ComObjectTest, AServersOwnErrorKeepsItsNumberAndText) {
    server_.thrown.scode = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 5941);
    server_.thrown.bstrDescription = SysAllocString(L"Le membre demandé n'existe pas.");
    const RuntimeError error = ErrorOf(DISP_E_EXCEPTION);
    EXPECT_EQ(error.Number(), 5941);
    EXPECT_EQ(error.Description(), u"Le membre demandé n'existe pas.");
}

TEST_F(ComObjectTest, AnErrorMayBeDescribedOnDemandOnly) {
    server_.thrown.pfnDeferredFillIn = [](EXCEPINFO* exception) -> HRESULT {
        exception->wCode = 1234;
        exception->bstrDescription = SysAllocString(L"Plus tard");
        return S_OK;
    };
    const RuntimeError error = ErrorOf(DISP_E_EXCEPTION);
    EXPECT_EQ(error.Number(), 1234);
    EXPECT_EQ(error.Description(), u"Plus tard");
}

TEST_F(ComObjectTest, AnErrorWithoutTextHasThatOfItsNumber) {
    server_.thrown.scode = DISP_E_TYPEMISMATCH;
    EXPECT_EQ(ErrorOf(DISP_E_EXCEPTION).Description(), basic::DescriptionOf(basic::error::kTypeMismatch));
}

TEST_F(ComObjectTest, ABusyServerIsAskedAgain) {
    server_.results = {RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER};
    server_.answer.vt = VT_I4;
    server_.answer.lVal = 3;
    EXPECT_EQ(Call(), Value(3));
    EXPECT_EQ(server_.calls, 3);
}

TEST_F(ComObjectTest, AServerThatStaysBusyRefusesInTheEnd) {
    server_.results.assign(10, RPC_E_CALL_REJECTED);
    EXPECT_THROW(Call(), RuntimeError);
    EXPECT_EQ(server_.calls, 3);
}

}  // namespace
}  // namespace quardele::tests
