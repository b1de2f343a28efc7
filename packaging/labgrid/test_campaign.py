# SPDX-License-Identifier: MIT
"""The cases of a campaign on every place of the environment."""
import pytest


@pytest.fixture
def verdict(campaigns, place, case):
    """A case that cannot be judged is an error of its set-up and not a failure."""
    line = campaigns(place).get(case)
    assert line, f"{place}: {case} was not run"
    assert line["verdict"] != "invalid", f"{place}: {case}: invalid: {line['told']}"
    return line


def test_case(verdict, record_property):
    for figure in ("detection_us", "handling_ms"):
        if verdict[figure] is not None:
            record_property(figure, verdict[figure])
    assert verdict["as_expected"], f"{verdict['verdict']}: {verdict['told']}"
