// placeholder until the reference engine lands
