#include "CDisplaySvc.h"

namespace Vantrel {
namespace Solva {

CDisplaySvc::CDisplaySvc() = default;
CDisplaySvc::~CDisplaySvc() = default;

}  // namespace Solva
}  // namespace Vantrel
