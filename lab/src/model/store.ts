import type { ReactiveControllerHost } from 'lit';

/** State that several components show. A component that observes it is drawn anew when it changes. */
export class Store {
    private observers = new Set<ReactiveControllerHost>();

    observedBy(host: ReactiveControllerHost): this {
        host.addController({
            hostConnected: () => this.observers.add(host),
            hostDisconnected: () => this.observers.delete(host),
        });
        return this;
    }

    protected changed(): void {
        for (const host of this.observers) host.requestUpdate();
    }
}
