#include <reports/report_request.h>

namespace quardele::reports {

ReportRequest& TheReportRequest() {
    static ReportRequest request;
    return request;
}

}  // namespace quardele::reports
