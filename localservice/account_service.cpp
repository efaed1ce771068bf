#include "localservice/account_service.h"

#include "localservice/account/endpoints.h"
#include "localservice/sync/endpoints.h"

namespace velmo::localservice {

std::vector<Endpoint> accountServiceEndpoints(AccountDatabase &database, Accounts &accounts) {
    return {
        signInPageEndpoint(),
        signInEndpoint(accounts),
        signInCallbackEndpoint(),
        tokenExchangeEndpoint(accounts),
        accountEndpoint(database),
        dictionaryPullEndpoint(database),
        dictionaryPushEndpoint(database),
        snippetPullEndpoint(database),
        snippetPushEndpoint(database),
        statisticsPullEndpoint(database),
        statisticsPushEndpoint(database),
        statisticsIncrementEndpoint(database),
    };
}

} // namespace velmo::localservice
