#pragma once

#include <string>
#include <utility>

namespace dll::stdcall {

/// A function of another module, found by name. `load` has the module loaded for the life of the object; otherwise it
/// is looked for among the loaded ones, and nothing is held.
class dllbase {
public:
    dllbase(bool load, const std::wstring& moduleName, const std::wstring& procName);
    ~dllbase();
    dllbase(const dllbase&) = delete;
    dllbase& operator=(const dllbase&) = delete;

    bool IsValid() const { return proc != nullptr; }

protected:
    void* proc = nullptr;

private:
    void* module = nullptr; ///< to free, or null
};

/// A function of one argument. Arguments go by value; call only where IsValid.
template <class Result, class A> class dll1 : public dllbase {
public:
    using dllbase::dllbase;
    Result operator()(A a) const { return reinterpret_cast<Result (*)(A)>(proc)(std::move(a)); }
};

template <class Result, class A, class B, class C, class D, class E, class F> class dll6 : public dllbase {
public:
    using dllbase::dllbase;
    Result operator()(A a, B b, C c, D d, E e, F f) const {
        return reinterpret_cast<Result (*)(A, B, C, D, E, F)>(proc)(std::move(a), std::move(b), std::move(c),
                                                                    std::move(d), std::move(e), std::move(f));
    }
};

} // namespace dll::stdcall
