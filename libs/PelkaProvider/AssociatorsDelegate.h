// AssociatorsDelegate: a ready-made Associators delegate for association
// classes whose answer depends on the class of the source object. It checks
// the association class name, then hands the request to one of two handlers
// chosen by the source path's class name (exact, case-sensitive; no
// inheritance is taken into account).
#ifndef ZEDA_PELKA_ASSOCIATORSDELEGATE_H
#define ZEDA_PELKA_ASSOCIATORSDELEGATE_H

#include <memory>
#include <string>

#include "DelegateTables.h"

namespace zeda::pelka {

class AssociatorsDelegate : public AssociationMI::AssociatorsDelegate {
 public:
  class ClassHandler {
   public:
    explicit ClassHandler(const std::string& className) : className_(className) {}
    virtual ~ClassHandler();
    ClassHandler(const ClassHandler&) = delete;
    ClassHandler& operator=(const ClassHandler&) = delete;

    virtual CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt,
                                  const CmpiObjectPath& cop, const std::string& assocClass,
                                  const std::string& resultClass, const std::string& role,
                                  const std::string& resultRole, const char** properties) = 0;

    // The endpoint class this handler serves.
    const std::string& className() const { return className_; }

   private:
    std::string className_;
  };

  AssociatorsDelegate() = default;
  ~AssociatorsDelegate() override;

  // Takes both handlers, destroying any held before.
  void setHandlers(std::unique_ptr<ClassHandler> first, std::unique_ptr<ClassHandler> second);

  CmpiStatus operator()(const CmpiContext& ctx, CmpiResult& rslt, const CmpiObjectPath& cop,
                        const std::string& assocClass, const std::string& resultClass,
                        const std::string& role, const std::string& resultRole,
                        const char** properties) override;

 private:
  std::unique_ptr<ClassHandler> first_;
  std::unique_ptr<ClassHandler> second_;
};

}  // namespace zeda::pelka

#endif
