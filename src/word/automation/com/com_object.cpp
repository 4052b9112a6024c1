#include "com_object.h"

#include <winerror.h>

#include <string>
#include <vector>

#include "com_error.h"
#include "com_value.h"

namespace quardele::automation::com {

namespace {

bool IsBusy(HRESULT result) {
    return result == RPC_E_CALL_REJECTED || result == RPC_E_SERVERCALL_RETRYLATER;
}

template <class Ask>
HRESULT Patiently(const Patience& patience, const Ask& ask) {
    HRESULT result = ask();
    for (int attempt = 1; IsBusy(result) && attempt < patience.attempts; ++attempt) {
        Sleep(static_cast<DWORD>(patience.pause.count()));
        result = ask();
    }
    return result;
}

/// The numbers under which a server knows a member and, behind it, the named arguments of a call.
std::vector<DISPID> NumbersOf(IDispatch& dispatch, const Patience& patience, TextView member,
                              std::span<const NamedArgument> named) {
    std::vector<std::wstring> names{{member.begin(), member.end()}};
    for (const auto& [name, value] : named) {
        names.emplace_back(name.begin(), name.end());
    }
    std::vector<LPOLESTR> pointers;
    for (std::wstring& name : names) {
        pointers.push_back(name.data());
    }
    std::vector<DISPID> numbers(names.size(), DISPID_UNKNOWN);
    const HRESULT result = Patiently(patience, [&] {
        return dispatch.GetIDsOfNames(IID_NULL, pointers.data(), static_cast<UINT>(pointers.size()),
                                      LOCALE_USER_DEFAULT, numbers.data());
    });
    if (result == DISP_E_UNKNOWNNAME && numbers[0] != DISPID_UNKNOWN) {
        throw basic::RuntimeError(kNoSuchNamedArgument);
    }
    if (FAILED(result)) {
        ThrowResult(result);
    }
    return numbers;
}

/// The arguments of a call as a server reads them: those with a name in front, the others from the last to
/// the first.
std::vector<ComVariant> InServersOrder(std::span<const Value> arguments,
                                       std::span<const NamedArgument> named) {
    std::vector<ComVariant> values;
    values.reserve(arguments.size() + named.size());
    for (const auto& [name, value] : named) {
        values.push_back(ToCom(value));
    }
    for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument) {
        values.push_back(ToCom(*argument));
    }
    return values;
}

/// Calls a member; `names` are the numbers of the first values.
Value Invoke(IDispatch& dispatch, const Patience& patience, DISPID member, WORD kind,
             std::vector<ComVariant> values, std::span<DISPID> names) {
    // A ComVariant is its VARIANT and nothing more, so that the values lie as COM wants them.
    static_assert(sizeof(ComVariant) == sizeof(VARIANT));
    DISPPARAMS parameters{values.empty() ? nullptr : &values.front().Raw(), names.data(),
                          static_cast<UINT>(values.size()), static_cast<UINT>(names.size())};
    ComVariant answer;
    EXCEPINFO exception{};
    UINT wrong = 0;
    const HRESULT result = Patiently(patience, [&] {
        return dispatch.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                               kind == DISPATCH_PROPERTYPUT ? nullptr : &answer.Raw(), &exception, &wrong);
    });
    if (result == DISP_E_EXCEPTION) {
        ThrowException(exception);
    }
    if (FAILED(result)) {
        ThrowResult(result);
    }
    return FromCom(answer.Raw());
}

}  // namespace

Value ComObject::Call(TextView member, std::span<const Value> arguments,
                      std::span<const NamedArgument> named) {
    std::vector<DISPID> numbers = NumbersOf(*dispatch_.Get(), patience_, member, named);
    return Invoke(*dispatch_.Get(), patience_, numbers[0], DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                  InServersOrder(arguments, named), std::span(numbers).subspan(1));
}

void ComObject::Set(TextView member, const Value& value) {
    const std::vector<DISPID> numbers = NumbersOf(*dispatch_.Get(), patience_, member, {});
    DISPID put = DISPID_PROPERTYPUT;
    Invoke(*dispatch_.Get(), patience_, numbers[0], DISPATCH_PROPERTYPUT,
           InServersOrder(std::span(&value, 1), {}), std::span(&put, 1));
}

}  // namespace quardele::automation::com
