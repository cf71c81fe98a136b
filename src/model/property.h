// A plain property: a value with a default, read as Name() and written as SetName().
#pragma once

#define ZELMAR_PROPERTY(Type, Name, Default) \
 public:                                     \
  const Type& Name() const {                 \
    return m_##Name;                         \
  }                                          \
  void Set##Name(const Type& value) {        \
    m_##Name = value;                        \
  }                                          \
                                             \
 private:                                    \
  Type m_##Name = Default;
