#include "account_service.h"

#include "account_endpoints.h"
#include "authorize_endpoints.h"
#include "dictionary_endpoints.h"
#include "snippet_endpoints.h"
#include "statistics_endpoints.h"

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
