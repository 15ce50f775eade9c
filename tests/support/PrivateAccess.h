#pragma once

/// Gives the tests a private member that no caller can reach, by way of the one place where the language
/// doesn't check access, the arguments of an explicit instantiation:
///
///     NEREO_PRIVATE_MEMBER(settingValue, QVariant Setting::*, &Setting::value_)
///     setting.*settingValue() = QVariant(true);
#define NEREO_PRIVATE_MEMBER(accessor, Type, member)                                                         \
    namespace PrivateAccess::accessor {                                                                      \
    using Member = Type;                                                                                     \
    Member get();                                                                                            \
    template <Member value>                                                                                  \
    struct Access {                                                                                          \
        friend Member get() { return value; }                                                                \
    };                                                                                                       \
    template struct Access<member>;                                                                          \
    }                                                                                                        \
    inline auto accessor()                                                                                   \
    {                                                                                                        \
        return PrivateAccess::accessor::get();                                                               \
    }
