// How a class derives from another in ES5; TypeScript's own helper is many times as long, for what the client has not.
export function __extends(derived, base) {
    function Prototype() {
        this.constructor = derived;
    }
    Prototype.prototype = base.prototype;
    derived.prototype = new Prototype();
}
