#pragma once

namespace tamvelo::demo {

/// The lists of words in SampleNames.cpp, in its order.
enum class Words {
    Families,
    Pieces, // of each family, separated by '|'
    Sections,
    Taxes,
    Phases,
    Trials,
    Routes,
    ProductTypes,
    Jobs,
    States,
    Zones,
    Accounts,
    Remarks,
    AppointmentTypes,
    GivenNames,
    Surnames,
    StreetKinds,
    StreetNames,
    ClinicKinds,
    SupplierKinds,
    Materials,
    Shades,
    Series,
};

/// How the sample data fills a column. Made by the functions below; `a` and `b` mean what the maker says.
struct Recipe {
    enum class Kind {
        Code,
        ArticleCode,
        ArticleFamily,
        Article,
        Each,
        Any,
        Person,
        Clinic,
        Supplier,
        Street,
        Town,
        Province,
        PostCode,
        Phone,
        TaxId,
        Number,
        Amount,
        DateAlong,
        Date,
        Time,
        Flag,
        Reference,
        FromReference,
        Times,
    };
    Kind kind;
    int a = 0;
    int b = 0;
    int nullPercent = 0;

    constexpr Recipe OrNull(int percent) const { return {kind, a, b, percent}; }
};

/// Rows of a table in the sample data: a fixed number, or so many per 100 articles; both 0: one for each word
/// of its list.
struct SampleRows {
    int fixed = 0;
    int perHundredArticles = 0;
};

namespace recipe {

constexpr Recipe Of(Recipe::Kind kind, int a = 0, int b = 0) { return {kind, a, b, 0}; }
/// Consecutive numbers; in a text column with zeros in front, as long as the column allows.
constexpr Recipe Code(int first = 1) { return Of(Recipe::Kind::Code, first); }
/// One word of the list after another, or any of them.
constexpr Recipe Each(Words words) { return Of(Recipe::Kind::Each, static_cast<int>(words)); }
constexpr Recipe Any(Words words) { return Of(Recipe::Kind::Any, static_cast<int>(words)); }
constexpr Recipe Number(int least, int most) { return Of(Recipe::Kind::Number, least, most); }
/// In euros, with any cents.
constexpr Recipe Amount(int least, int most) { return Of(Recipe::Kind::Amount, least, most); }
/// True so often in a hundred.
constexpr Recipe Flag(int percent) { return Of(Recipe::Kind::Flag, percent); }
/// The code of some row of the related table.
constexpr Recipe Reference() { return Of(Recipe::Kind::Reference); }
/// What that row, named by our column `reference`, holds in its column `column`.
constexpr Recipe FromReference(int reference, int column) {
    return Of(Recipe::Kind::FromReference, reference, column);
}

/// The product of two of our columns.
constexpr Recipe Times(int left, int right) { return Of(Recipe::Kind::Times, left, right); }

} // namespace recipe

} // namespace tamvelo::demo
