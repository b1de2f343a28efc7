# SPDX-License-Identifier: MIT
"""A test per place and case: a place runs the campaign once, in one worker, while other places run theirs."""
import pathlib
import tomllib

import pytest


def pytest_addoption(parser):
    parser.addoption("--campaign", required=True, help="campaign file")
    parser.addoption("--reports", required=True, help="folder; each place gets one of its own in it")


def pytest_generate_tests(metafunc):
    if not {"place", "case"} <= set(metafunc.fixturenames):
        return
    campaign = tomllib.loads(pathlib.Path(metafunc.config.getoption("campaign")).read_text(encoding="utf-8"))
    cases = [case["id"] for mechanism in campaign["mechanism"] for case in mechanism["case"]]
    places = metafunc.config._labgrid_env.config.get_targets()
    metafunc.parametrize("place, case", [
        pytest.param(place, case, id=f"{place}-{case}", marks=pytest.mark.xdist_group(place))
        for place in places for case in cases])


@pytest.fixture(scope="session")
def campaigns(env, pytestconfig):
    """Verdicts by place; the campaign runs when the first of them is asked for."""
    done = {}

    def verdicts(place):
        if place not in done:
            driver = env.get_target(place).get_driver("SafetyWorkbenchDriver")
            report = pathlib.Path(pytestconfig.getoption("reports")) / place
            try:
                done[place] = driver.campaign(pytestconfig.getoption("campaign"), report)
            except Exception as trouble:  # every case of the place tells it
                done[place] = trouble
        if isinstance(done[place], Exception):
            raise done[place]
        return done[place]

    return verdicts
